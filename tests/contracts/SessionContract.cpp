#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/SessionHosts.h"

namespace tallyvane::testing {
namespace {

template <typename Host>
struct WorkspaceContract : ::testing::Test, Host {};
using Workspaces = ::testing::Types<WorkspaceInMemory, WorkspaceOnABus>;
TYPED_TEST_SUITE(WorkspaceContract, Workspaces);

TYPED_TEST(WorkspaceContract, ListsApplicationsWhileTheyRunAndSaysWhyAUrlIsNotOpened) {
  this->letRun("com.example.Bills");
  EXPECT_THAT(this->workspace.runningApplications(), Contains("com.example.Bills"));
  this->letEnd();
  EXPECT_THAT(this->workspace.runningApplications(), Not(Contains("com.example.Bills")));
  this->claimNothing();
  EXPECT_NE(this->workspace.openUrl("unclaimed:x").error(), "");
}

template <typename Host>
struct StatusBarContract : ::testing::Test, Host {};
using StatusBars = ::testing::Types<StatusBarInMemory, StatusBarOnABus>;
TYPED_TEST_SUITE(StatusBarContract, StatusBars);

TYPED_TEST(StatusBarContract, AnItemShowsTheLastMenuThatItWasGivenAndKeepsIt) {
  Menu menu{{command("Show"), MenuEntry(), billEntry("A", "Rent\nDue today")}};
  this->item->setMenu(menu);
  menu.entries.clear();
  EXPECT_THAT(this->labels(), ElementsAre("Show", "-", "Rent\nDue today"));
  this->item->setMenu(menu);
  EXPECT_THAT(this->labels(), IsEmpty());
}

}  // namespace
}  // namespace tallyvane::testing
