#include "freedesktop/DesktopEntries.h"

#include <gmock/gmock.h>

#include <regex>
#include <sstream>

#include "freedesktop/Terminal.h"
#include "support/DesktopEntryFolders.h"
#include "support/InMemoryFileStore.h"
#include "support/TemporaryFolder.h"
#include "support/TextTable.h"

namespace tallyvane::testing {
namespace {

TEST(DesktopEntries, FindTheHandlerOfASchemeByTheDesktopsOwnRules) {
  const struct {
    std::string rule, applications, handler;
    std::vector<List> lists = {};
  } rows[] = {
      {"nothing claims it", "-own/a", "none"},
      {"a claim needs no cache", "-own/a +own/b", "own/b"},
      {"a claim in a subfolder counts", "+usr/kde/b", "usr/kde/b"},
      {"the cache before entries", "+own/a -own/b", "own/b", {{own + "mimeinfo.cache", "MIME Cache", "b;a"}}},
      {"the user's folder before the system's", "+own/b +usr/a", "own/b"},
      {"a default before claims", "+own/a -usr/b", "usr/b", {{"/etc/xdg/mimeapps.list", defaults, "b"}}},
      {"the user's default before the system's",
       "-own/a -own/b",
       "own/b",
       {{"/etc/xdg/mimeapps.list", defaults, "a"}, {ownList, defaults, "b"}}},
      {"the desktop's list before the common one",
       "-own/a -own/b",
       "own/b",
       {{ownList, defaults, "a"}, {"/home/ada/.config/xfce-mimeapps.list", defaults, "b"}}},
      {"a default that is gone", "-own/b +usr/a", "own/b", {{ownList, defaults, "gone;b"}}},
      {"added by the user", "-own/a +usr/b", "own/a", {{ownList, "Added Associations", "a"}}},
      {"removed by the user", "+own/a +usr/b", "usr/b", {{ownList, "Removed Associations", "a"}}},
      {"hidden by the user", "!own/a +usr/a", "none"},
      {"a program that is not installed", "?own/a", "none"},
      {"an identifier that leads out", "-own/../a", "none", {{ownList, defaults, "../a"}}},
  };
  SessionEnvironment environment;
  environment.configFolders = {"/home/ada/.config", "/etc/xdg"};
  environment.dataFolders = {"/home/ada/.local/share", "/usr/share"};
  environment.desktops = {"xfce"};
  for (const auto& row : rows) {
    InMemoryFileStore files;
    install(files, row.applications);
    for (const List& list : row.lists) {
      const std::string ids = std::regex_replace(list.ids + ";", std::regex(";"), ".desktop;");
      files.content[list.path] = "# made by hand\n[" + list.group + "]\nx-scheme-handler/bill = " + ids + "\n";
    }
    const auto entry = DesktopEntries(files, environment).handlerOfScheme("bill");
    EXPECT_EQ(entry ? entry->path : "none", row.handler == "none" ? row.handler : pathOf(row.handler)) << row.rule;
  }
}

TEST(CommandForUrl, ReplacesFieldCodesAndUndoesQuotes) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"view %u", {"view", "bill://x y"}},
      {"view --new=%U -x", {"view", "--new=bill://x y", "-x"}},
      {R"("/opt/my viewer" "a \"b\" %u" %u)", {"/opt/my viewer", R"(a "b" %u)", "bill://x y"}},
      {"view %f %i %c %k 100%% %z", {"view", "--icon", "bills", "Bill View", "/a.desktop", "100%"}},
      {"view", {"view"}},
      {"view \"open", {}},
      {"", {}},
  };
  DesktopEntry entry;
  entry.icon = "bills";
  entry.name = "Bill View";
  entry.path = "/a.desktop";
  for (const auto& [exec, expected] : cases) {
    entry.exec = exec;
    const auto command = commandForUrl(entry, "bill://x y");
    EXPECT_EQ(command ? *command : std::vector<std::string>(), expected) << exec;
  }
  entry.exec = "view %F";
  EXPECT_THAT(*commandForUrl(entry, "file:///tmp/a%20b"), ElementsAre("view", "/tmp/a b"));
}

TEST(DesktopEntryFile, IsReadFromItsMainGroupWithEscapes) {
  const auto entry = parseDesktopEntry(
      "[Desktop Action New]\nExec=other\n[Desktop Entry]\nType=Application\nName=A\\sB\nName[de]=C\n"
      "Exec=\"x\\\\\\\\y\"\nMimeType=a/b;c\\;d;;\nTerminal=true\nDBusActivatable=true\n");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "A B");
  EXPECT_THAT(*commandForUrl(*entry, ""), ElementsAre("x\\y"));
  EXPECT_THAT(entry->mimeTypes, ElementsAre("a/b", "c;d"));
  EXPECT_TRUE(entry->terminal && entry->dbusActivatable);
  EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nURL=http://x\n"));
}

TEST(InTerminal, TakesTheUsersTerminalThenTheFirstKnownOneThatIsInstalled) {
  TemporaryFolder folder;
  SessionEnvironment environment;
  environment.programFolders = {folder.path};
  EXPECT_FALSE(inTerminal(environment, {"show"}));
  const auto install = [&](const std::string& name) {
    put(folder.path + "/" + name, "");
    std::filesystem::permissions(folder.path + "/" + name, std::filesystem::perms::owner_all);
  };
  install("xterm");
  EXPECT_THAT(*inTerminal(environment, {"show", "A"}), ElementsAre(folder.path + "/xterm", "-e", "show", "A"));
  install("xfce4-terminal");
  EXPECT_THAT(*inTerminal(environment, {"show"}), ElementsAre(folder.path + "/xfce4-terminal", "-x", "show"));
  environment.terminal = "kitty";
  install("kitty");
  EXPECT_THAT(*inTerminal(environment, {"show"}), ElementsAre(folder.path + "/kitty", "show"));
}

TEST(SessionEnvironment, IsToldByTheVariablesOrTheirStandIns) {
  const auto of = [](TextTable variables) { return SessionEnvironment::of(lookupIn(std::move(variables))); };
  const SessionEnvironment bare = of({{"HOME", "/home/ada"}, {"XDG_RUNTIME_DIR", "/run/user/1 0/"}});
  EXPECT_EQ(bare.busAddress, "unix:path=/run/user/1%200/bus");
  EXPECT_THAT(bare.configFolders, ElementsAre("/home/ada/.config", "/etc/xdg"));
  EXPECT_THAT(bare.dataFolders, ElementsAre("/home/ada/.local/share", "/usr/local/share", "/usr/share"));

  const SessionEnvironment full = of({{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/b"},
                                      {"XDG_CONFIG_DIRS", "/a/:relative::/b"},
                                      {"XDG_CURRENT_DESKTOP", "Budgie:GNOME"}});
  EXPECT_EQ(full.busAddress, "unix:path=/b");
  EXPECT_THAT(full.configFolders, ElementsAre("/a", "/b"));
  EXPECT_THAT(full.desktops, ElementsAre("budgie", "gnome"));
  EXPECT_EQ(of({}).busAddress, "");
}

}  // namespace
}  // namespace tallyvane::testing
