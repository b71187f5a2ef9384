// What the programs share: the lock around a writing operation, and the platform put together.
#include <gmock/gmock.h>

#include "common/DesktopPlatform.h"
#include "common/ProgramLock.h"
#include "foundation/Calendar.h"
#include "support/Fakes.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::programs {
namespace {

using namespace tallyvane::testing;
using std::chrono::milliseconds;

class ProgramLockTest : public ::testing::Test {
 protected:
  Result<ProgramLock> take(const ProgramLock::Pause& pause) {
    return ProgramLock::take(
        files, path, [&] { toldAfter = paused; },
        [&, pause](milliseconds time) {
          paused += time;
          pause(time);
        });
  }
  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  std::string path = folder.path + "/Tallyvane/lock";
  milliseconds paused{0};
  milliseconds toldAfter{-1};
};

TEST_F(ProgramLockTest, IsHadAtOnceWhenFreeElseAsSoonAsTheOtherProgramLetsItGo) {
  auto other = std::make_unique<Result<ProgramLock>>(take([](milliseconds) {}));
  EXPECT_EQ(paused.count(), 0);
  const auto mine = take([&](milliseconds) {
    if (paused >= milliseconds(2000)) other.reset();
  });
  EXPECT_TRUE(mine) << mine.error();
  EXPECT_EQ(toldAfter.count(), 1000);
  EXPECT_EQ(paused.count(), 2000);
}

TEST_F(ProgramLockTest, IsGivenUpAfterHalfAMinuteWithAClearText) {
  const auto other = take([](milliseconds) {});
  const auto mine = take([](milliseconds) {});
  EXPECT_THAT(mine.error(), HasSubstr("another Tallyvane program has been changing the data for 30 seconds"));
  EXPECT_EQ(paused.count(), 30'000);
}

TEST_F(ProgramLockTest, SaysWhyItCannotBeHad) {
  put(folder.path + "/Tallyvane", "a file where the folder should be");
  EXPECT_THAT(take([](milliseconds) {}).error(), HasSubstr(folder.path + "/Tallyvane"));
  EXPECT_THAT(ProgramLock::take(files, "", [] {}).error(), HasSubstr("not an absolute path"));
}

class DesktopPlatformTest : public ::testing::Test {
 protected:
  TemporaryFolder home;
  Region region{"en_US", "America/New_York", {}};
  FakeClock clock;
  RecordingLog log;
  FakeWorkspace workspace;
  FakeStatusBar statusBar;
  DesktopPlatform desktop{{.dataHome = home.path + "/share",
                           .configHome = home.path + "/config",
                           .stateHome = home.path + "/state",
                           .dataDirs = {}},
                          region,
                          clock,
                          log,
                          workspace,
                          statusBar,
                          workspace};
  Platform& platform = desktop.platform();
};

TEST_F(DesktopPlatformTest, StartsWithFirstValuesAndWritesNothing) {
  EXPECT_EQ(platform.defaults.object("QMDueSoonDays"), Value(7));
  const auto time = platform.defaults.object("QMReminderTime");
  ASSERT_TRUE(time && time->is<Date>());
  const DateFields fields = Calendar::of(region).fields(*time->get<Date>());
  EXPECT_EQ(std::pair(fields.hour, fields.minute), std::pair(9, 0));
  EXPECT_FALSE(platform.groupDefaults->object("QMDueSoonDays"));
  EXPECT_TRUE(std::filesystem::is_empty(home.path));
}

TEST_F(DesktopPlatformTest, KeepsCalendarsWithTheDataOrInTheFolderChosen) {
  for (const std::string root : {"/share/calendars", "/chosen"}) {
    if (root == "/chosen") {
      ASSERT_TRUE(platform.defaults.set("QMCalendarFolder", home.path + root + "/"));
    }
    ASSERT_TRUE(platform.calendars.save(EventCalendar{"", "Bills", std::nullopt}));
    EXPECT_EQ(contentOf(home.path + root + "/Bills/displayname"), "Bills");
  }
}

}  // namespace
}  // namespace tallyvane::programs
