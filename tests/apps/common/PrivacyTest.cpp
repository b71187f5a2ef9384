// What the programs make on disk is its owner's alone.
#include <gmock/gmock.h>

#include <set>

#include "freedesktop/PosixFileStore.h"
#include "support/CommandLineHome.h"
#include "support/OpenMask.h"

namespace tallyvane::testing {
namespace {

namespace fs = std::filesystem;

bool isOwnersAlone(const fs::path& path) {
  const auto others = fs::perms::group_all | fs::perms::others_all;
  return fs::is_symlink(path) || (fs::status(path).permissions() & others) == fs::perms::none;
}

TEST(Privacy, FilesAndFoldersAreTheirOwnersAloneWhateverTheMask) {
  const OpenMask mask;
  CommandLineHome home;
  const std::string& folder = home.folder.path;
  put(folder + "/readable.pdf", "receipt");
  fs::create_directory(folder + "/chosen");
  fs::create_directory(folder + "/chosen/Tallyvane.tvdata");
  const std::vector<std::vector<std::string>> commands{
      {"settings", "set", "QMReminderEvents", "yes"},
      {"settings", "set", "QMEnableNotificationCenter", "yes"},
      {"settings", "set", "iCloudSyncEnabled", "yes"},
      {"add", "Rent", "--due", "+20d", "--repeat", "monthly", "--amount", "9", "--tag", "Home", "--remind", "3"},
      {"pay", "Rent", "--receipt", folder + "/readable.pdf", "--keep-due-date"},
      {"edit", "Rent", "--notes", "again"},
      {"income", "add", "Pay", "--amount", "5", "--repeat", "monthly", "--day", "1"},
      {"graph", "Rent", "--svg", folder + "/graph.svg"},
      {"export", "--csv", "--output", folder + "/bills.csv"},
      {"settings", "set", "QMCustomLocationBookmark", folder + "/chosen"},
      {"settings", "set", "QMCustomLocationEnabled", "yes"},
      {"add", "Elsewhere", "--due", "+20d", "--repeat", "never", "--amount", "9"}};
  for (const auto& command : commands) {
    const Said said = home.run(command);
    EXPECT_EQ(said.status, 0) << command.front() << ": " << said.text;
  }
  PosixFileStore files(home.data);
  ASSERT_TRUE(files.copy(folder + "/chosen/Tallyvane.tvdata", folder + "/copy"));

  for (const char* made :
       {"/share/Tallyvane/Tallyvane.tvdata/billindex.plist", "/share/calendars/Tallyvane",
        "/config/Tallyvane/com.Quillmoor.Tallyvane.plist", "/config/Tallyvane/group.Quillmoor.Tallyvane.plist",
        "/state/Tallyvane/lock", "/state/Tallyvane/cloud.plist", "/state/Tallyvane/notifications.plist", "/graph.svg",
        "/bills.csv", "/chosen/Tallyvane.tvdata/billindex.plist", "/copy/billindex.plist"})
    EXPECT_TRUE(fs::exists(folder + made)) << made;
  const std::set<std::string> theTests{folder + "/readable.pdf", folder + "/chosen",
                                       folder + "/chosen/Tallyvane.tvdata"};
  int receipts = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".pdf") ++receipts;
    EXPECT_TRUE(theTests.contains(entry.path()) || isOwnersAlone(entry.path())) << entry.path();
  }
  EXPECT_EQ(receipts, 2);
}

}  // namespace
}  // namespace tallyvane::testing
