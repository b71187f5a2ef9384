#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "helper/QMAppDelegate.h"
#include "support/Matchers.h"
#include "support/Menulet.h"

namespace tallyvane::testing {
namespace {

TEST(Launcher, OpensTheLaunchUrlUnlessTheMainApplicationRunsAndEndsInEveryCase) {
  const std::pair<std::vector<std::string>, bool> cases[] = {
      {{}, true},
      {{"com.quillmoor.tallyvane", "com.Quillmoor.Tallyvane.Helper"}, true},
      {{"org.other", "com.Quillmoor.Tallyvane", "org.last"}, false}};
  for (const bool failing : {false, true}) {
    for (const auto& [running, opens] : cases) {
      FakeWorkspace workspace;
      workspace.running = running;
      workspace.failing = failing;
      QMAppDelegate delegate{workspace, workspace};
      delegate.applicationDidFinishLaunching();
      std::vector<std::string> expected;
      if (opens) expected.emplace_back("open com-quillmoor-tallyvanelaunch:///");
      expected.emplace_back("terminate");
      EXPECT_EQ(workspace.calls, expected);
      EXPECT_EQ(delegate.theMenulet, nullptr);
    }
  }
}

TEST_F(Menulet, ShowsTheBillsWithinTheHorizonInOrderAndTheirCount) {
  menulet.updateMenuWithDataSource({row("In 3", 3), row("Today", 0), row("Overdue", -2), row("In 10", 10)});
  const ShownItem& shown = desktop.statusBar.shown;
  EXPECT_THAT(titles(shown.menu), ElementsAre("Show Tallyvane", "---", "Overdue", "Today", "In 3"));
  EXPECT_EQ(shown.title, (StyledText{"3", {{0, 1, "", 0.0, false}}}));
  EXPECT_EQ(shown.menu.entries[0].action, "showTallyvane");
  EXPECT_EQ(shown.image, "mnblack");
  EXPECT_EQ(shown.alternateImage, "mnwhite");
  EXPECT_EQ(shown.toolTip, "Tallyvane");
  EXPECT_TRUE(shown.enabled && shown.highlight);
  EXPECT_EQ(desktop.statusBar.requestedLength, -1.0);
  EXPECT_THAT(desktop.log.lines, ElementsAre("Menulet initialized from helper"));

  desktop.defaults.content.set("QMShouldDisplayStatusTitle", false);
  menulet.updateMenuWithDataSource({row("Today", 0), without(row("Dateless", 0), "DueDate")});
  EXPECT_THAT(titles(shown.menu), ElementsAre("Show Tallyvane", "---", "Today"));
  EXPECT_EQ(shown.title.text, "");
  EXPECT_EQ(shown.made, 1);
}

TEST_F(Menulet, IsEmptyButForItsCommandWithoutBills) {
  desktop.region.words = [](std::string_view word) { return word == "Show Tallyvane" ? "Zeige Tallyvane" : ""; };
  menulet.updateMenuWithDataSource({row("Today", 0)});
  menulet.updateMenuWithDataSource({});
  EXPECT_THAT(titles(desktop.statusBar.shown.menu), ElementsAre("Zeige Tallyvane", "---"));
  EXPECT_EQ(desktop.statusBar.shown.title.text, "");
}

TEST_F(Menulet, SwitchedOffChangesNothing) {
  menulet.updateMenuWithDataSource({row("Today", 0)});
  desktop.defaults.content.set("EnableStartAtLoginMenu", false);
  menulet.updateMenuWithDataSource({});
  EXPECT_THAT(titles(desktop.statusBar.shown.menu), ElementsAre("Show Tallyvane", "---", "Today"));
  QMHelperMenulet other{desktop.platform};
  other.updateMenuWithDataSource({row("Today", 0)});
  other.attachDefaultItemsToMenu();
  other.addMenuItemWithDictionary(row("Today", 0));
  EXPECT_EQ(other.statusItem, nullptr);
  EXPECT_EQ(desktop.statusBar.shown.made, 1);
}

TEST_F(Menulet, LeavesOutAutomaticBillsOnRequest) {
  desktop.defaults.content.set("QMDontCountAuto", 2);
  menulet.updateMenuWithDataSource({row("Auto", 0, 1), row("Other", 0, 2), row("By hand", 0, 0)});
  EXPECT_THAT(titles(desktop.statusBar.shown.menu), ElementsAre("Show Tallyvane", "---", "Other", "By hand"));
  EXPECT_EQ(desktop.statusBar.shown.title.text, "2");
}

TEST_F(Menulet, ABillsEntryHasTwoStyledLinesItsPictureAndItsIdentifier) {
  struct Case {
    std::string name, human;
    std::vector<TextStyle> styles;
  };
  const std::string family = "Lucida Grande";
  const Case cases[] = {
      {"Rent", "Due in 1 day", {{0, 4, family, 13.0, false}, {5, 12, family, 9.0, true}}},
      // Positions count UTF-16 units.
      {"\xF0\x9F\x8F\xA0 Miete", "F\xC3\xA4llig", {{0, 8, family, 13.0, false}, {9, 6, family, 9.0, true}}},
      // The grey style falls on the first occurrence, which may lie inside the name.
      {"Pay: Due today", "Due today", {{0, 14, family, 13.0, false}, {5, 9, family, 9.0, true}}},
      {"", "Due today", {{1, 9, family, 9.0, true}}},
  };
  for (const Case& c : cases) {
    Dictionary made = row(c.name, 1);
    made.set("HumanDueDate", c.human);
    menulet.updateMenuWithDataSource({made});
    const StyledText styled{c.name + "\n" + c.human, c.styles};
    const MenuEntry entry{MenuEntry::Kind::bill, c.name, styled, "32x32-House", "menuItemSelected:", "",
                          "bid of " + c.name};
    EXPECT_EQ(desktop.statusBar.shown.menu.entries.at(2), entry) << c.name;
  }
}

}  // namespace
}  // namespace tallyvane::testing
