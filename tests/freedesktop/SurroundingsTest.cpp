// Where the user's folders and the installed files lie, and what reaches the log.
#include <gmock/gmock.h>

#include "freedesktop/SystemLog.h"
#include "freedesktop/XdgFolders.h"
#include "support/Matchers.h"
#include "support/TextTable.h"

namespace tallyvane::testing {
namespace {

XdgFolders foldersWith(TextTable variables) { return XdgFolders::of(lookupIn(std::move(variables))); }

TEST(XdgFolders, AbsoluteVariablesCountAndOthersAreIgnored) {
  const XdgFolders chosen = foldersWith({{"HOME", "/home/ada"},
                                         {"XDG_DATA_HOME", "/data//"},
                                         {"XDG_CONFIG_HOME", "relative"},
                                         {"XDG_STATE_HOME", ""},
                                         {"XDG_DATA_DIRS", "/b/:relative::/a"}});
  EXPECT_EQ(chosen.dataHome, "/data");
  EXPECT_EQ(chosen.configHome, "/home/ada/.config");
  EXPECT_EQ(chosen.stateHome, "/home/ada/.local/state");
  EXPECT_THAT(chosen.dataDirs, ElementsAre("/b", "/a"));
}

TEST(XdgFolders, WithoutAHomeNoPathIsAbsolute) {
  for (const char* home : {"", "ada"}) {
    const XdgFolders folders = foldersWith({{"HOME", home}});
    EXPECT_EQ(folders.dataHome, "~/.local/share") << home;
    EXPECT_THAT(folders.dataDirs, ElementsAre("/usr/local/share", "/usr/share"));
  }
  EXPECT_EQ(foldersWith({{"HOME", "/"}}).stateHome, "/.local/state");
}

TEST(SystemLog, KeepsStandardErrorFreeUnlessVerbose) {
  SystemLog log("tallyvane", false);
  ::testing::internal::CaptureStderr();
  log.line("Database backed up.");
  log.diagnostic("/a cannot be read");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace tallyvane::testing
