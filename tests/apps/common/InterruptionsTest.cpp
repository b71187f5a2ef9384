// The command line as built, ended from outside or stopped by a disk that takes no more.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <thread>

#include "foundation/PropertyList.h"
#include "support/CommandLineHome.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST(Interruptions, ASignalEndsTheProgramOnlyBehindTheWholeOperation) {
  constexpr std::size_t bills = 150;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    CommandLineHome home;
    const std::string old = home.folder.path + "/Tallyvane";
    std::filesystem::create_directories(old + "/Data");
    for (std::size_t i = 0; i < bills; ++i)
      put(old + "/Data/Bill " + std::to_string(i) + ".plist",
          writePropertyList(Dictionary{{"Next_Due", Date()}, {"Repeat_a", 2}, {"Is_Active", true}}));
    const auto import = home.start({"import", old});
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!std::filesystem::exists(home.dataFolder + "/billindex.plist") && std::chrono::steady_clock::now() < end)
      std::this_thread::yield();
    import->signal(signal);
    EXPECT_EQ(import->ended(), 1000 + signal) << import->said();
    EXPECT_EQ(nlohmann::json::parse(home.run({"location", "--json"}).text).at("bills"), bills);
    EXPECT_THAT(home.run({"check"}).text, Not(HasSubstr("in no list")));
  }
}

/// 4 KiB is what the disk still takes.
TEST(Interruptions, ADiskThatTakesNoMoreLosesNothingAndIsNamed) {
  CommandLineHome home;
  ASSERT_EQ(home.run({"add", "Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "9"}).status, 0);
  const auto before = contentOfFolder(home.dataFolder);
  const std::vector<std::string> edit{"edit", "Rent", "--tag", "New", "--notes", std::string(8000, 'n')};
  const Said refused = home.runAfter("trap '' XFSZ; ulimit -f 8; exec \"$0\" \"$@\"", edit);
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.text, HasSubstr("File too large"));
  EXPECT_EQ(contentOfFolder(home.dataFolder), before);

  // Where the system kills the program for it, its temporary stays until the next save there.
  EXPECT_EQ(home.runAfter("ulimit -c 0; ulimit -f 8; exec \"$0\" \"$@\"", edit).status, 1000 + SIGXFSZ);
  auto left = contentOfFolder(home.dataFolder);
  EXPECT_EQ(std::erase_if(left, [](const auto& file) { return file.first.starts_with('.'); }), 1U);
  EXPECT_EQ(left, before);
  EXPECT_EQ(home.run(edit).status, 0);
  EXPECT_EQ(contentOfFolder(home.dataFolder).size(), before.size());
}

}  // namespace
}  // namespace tallyvane::testing
