#include "freedesktop/DesktopEntries.h"

#include <gmock/gmock.h>

#include "freedesktop/TemporaryFolder.h"
#include "freedesktop/Terminal.h"
#include "support/InMemoryFileStore.h"

namespace tallyvane::testing {
namespace {

using ::testing::ElementsAre;

/// One session's files for the scheme "bill", and the application that opens it there.
struct HandlerCase {
  std::string name;
  std::map<std::string, std::string> files;
  std::string expected;
};

const std::string own = "/home/ada/.local/share/applications/";
const std::string system1 = "/usr/share/applications/";
const std::string claiming = "[Desktop Entry]\nType=Application\nMimeType=x-scheme-handler/bill;\nExec=x\n";
const std::string silent = "[Desktop Entry]\nType=Application\nExec=x\n";

std::string list(const std::string& group, const std::string& ids) {
  return "# made by hand\n[" + group + "]\nx-scheme-handler/bill = " + ids + "\n";
}

class HandlerOfScheme : public ::testing::TestWithParam<HandlerCase> {};

TEST_P(HandlerOfScheme, IsFoundByTheDesktopsOwnRules) {
  InMemoryFileStore files;
  for (const auto& [path, text] : GetParam().files) {
    (void)files.createFolder(InMemoryFileStore::parent(path));
    files.content[path] = text;
  }
  SessionEnvironment environment;
  environment.configFolders = {"/home/ada/.config", "/etc/xdg"};
  environment.dataFolders = {"/home/ada/.local/share", "/usr/share"};
  environment.desktops = {"xfce"};
  const auto entry = DesktopEntries(files, environment).handlerOfScheme("bill");
  EXPECT_EQ(entry ? entry->path : "none", GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, HandlerOfScheme,
    ::testing::Values(
        HandlerCase{"Nothing", {{own + "a.desktop", silent}}, "none"},
        HandlerCase{
            "ClaimWithoutACache", {{own + "a.desktop", silent}, {own + "b.desktop", claiming}}, own + "b.desktop"},
        HandlerCase{"ClaimInASubfolder", {{system1 + "kde/b.desktop", claiming}}, system1 + "kde/b.desktop"},
        HandlerCase{"CacheBeforeEntries",
                    {{own + "a.desktop", claiming},
                     {own + "b.desktop", silent},
                     {own + "mimeinfo.cache", list("MIME Cache", "b.desktop;a.desktop;")}},
                    own + "b.desktop"},
        HandlerCase{"OwnFolderBeforeTheSystems",
                    {{own + "b.desktop", claiming}, {system1 + "a.desktop", claiming}},
                    own + "b.desktop"},
        HandlerCase{"DefaultBeforeClaims",
                    {{own + "a.desktop", claiming},
                     {system1 + "b.desktop", silent},
                     {"/etc/xdg/mimeapps.list", list("Default Applications", "b.desktop")}},
                    system1 + "b.desktop"},
        HandlerCase{"UsersDefaultBeforeTheSystems",
                    {{own + "a.desktop", silent},
                     {own + "b.desktop", silent},
                     {"/etc/xdg/mimeapps.list", list("Default Applications", "a.desktop")},
                     {"/home/ada/.config/mimeapps.list", list("Default Applications", "b.desktop")}},
                    own + "b.desktop"},
        HandlerCase{"DesktopsListBeforeTheCommonOne",
                    {{own + "a.desktop", silent},
                     {own + "b.desktop", silent},
                     {"/home/ada/.config/mimeapps.list", list("Default Applications", "a.desktop")},
                     {"/home/ada/.config/xfce-mimeapps.list", list("Default Applications", "b.desktop")}},
                    own + "b.desktop"},
        HandlerCase{"DefaultThatIsNotInstalled",
                    {{own + "b.desktop", claiming},
                     {"/home/ada/.config/mimeapps.list", list("Default Applications", "gone.desktop;b.desktop;")}},
                    own + "b.desktop"},
        HandlerCase{"AddedByTheUser",
                    {{own + "a.desktop", silent},
                     {system1 + "b.desktop", claiming},
                     {"/home/ada/.config/mimeapps.list", list("Added Associations", "a.desktop;")}},
                    own + "a.desktop"},
        HandlerCase{"RemovedByTheUser",
                    {{own + "a.desktop", claiming},
                     {system1 + "b.desktop", claiming},
                     {"/home/ada/.config/mimeapps.list", list("Removed Associations", "a.desktop;")}},
                    system1 + "b.desktop"},
        HandlerCase{"HiddenByTheUser",
                    {{own + "a.desktop", "[Desktop Entry]\nHidden=true\n"}, {system1 + "a.desktop", claiming}},
                    "none"},
        HandlerCase{"ProgramThatIsNotInstalled", {{own + "a.desktop", claiming + "TryExec=/no/such\n"}}, "none"},
        HandlerCase{"IdentifierThatLeadsOut",
                    {{"/home/ada/.local/share/a.desktop", claiming},
                     {"/home/ada/.config/mimeapps.list", list("Default Applications", "../a.desktop")}},
                    "none"}),
    [](const auto& tested) { return tested.param.name; });

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

TEST(ApplicationAddress, IsMadeFromTheIdentifier) {
  const ApplicationAddress address = applicationAddress("org.example.Bill-View.desktop");
  EXPECT_EQ(address.name, "org.example.Bill-View");
  EXPECT_EQ(address.objectPath, "/org/example/Bill_View");
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
  EXPECT_THAT(*inTerminal(environment, {"show"}), ElementsAre(folder.path + "/xfce4-terminal", "-x", "show"));
  install("kitty");
  EXPECT_THAT(*inTerminal(environment, {"show"}), ElementsAre(folder.path + "/kitty", "show"));
}

TEST(SessionEnvironment, IsToldByTheVariablesOrTheirStandIns) {
  const auto of = [](std::map<std::string, std::string> variables) {
    return SessionEnvironment::of([=](std::string_view name) -> std::optional<std::string> {
      const auto found = variables.find(std::string(name));
      return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
  };
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
