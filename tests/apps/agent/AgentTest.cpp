#include <gmock/gmock.h>

#include "support/AgentSession.h"
#include "support/Matchers.h"
#include "support/NamedPipe.h"

namespace tallyvane::testing {
namespace {

TEST_F(AgentTest, ShowsTheBillsDueSoonInTheirOrderWithTheirCount) {
  startAgent();
  EXPECT_THAT(panel->labels(),
              ElementsAre("Show Tallyvane", "-", "Water\nOverdue by 2 days", StartsWith("Rent\nDue in")));
  EXPECT_EQ(panel->property<std::string>("XAyatanaLabel"), "2");
  EXPECT_GT(panel->items()[2].get<1>().at("icon-data").get<std::vector<std::uint8_t>>().size(), 100U);
}

TEST_F(AgentTest, KeepsTheWidgetsNumbersTrue) {
  startAgent();
  Dictionary group = session.plist(session.groupSettings());
  EXPECT_EQ(group.valueOr("NumberOfBillsDueSoon", std::int64_t{-1}), 2);
  EXPECT_EQ(group.valueOr("NextBill", Dictionary()), bill("B", "Water", -2));
  list({"C"});
  ASSERT_TRUE(menuBecomes({}));
  ASSERT_TRUE(panel->until([&] { return !session.plist(session.groupSettings()).contains("NextBill"); }));
  group = session.plist(session.groupSettings());
  EXPECT_EQ(group.valueOr("NumberOfBillsDueSoon", std::int64_t{-1}), 0);
}

TEST_F(AgentTest, FollowsChangesOfBillsSettingsAndTheFolderItself) {
  startAgent();
  session.putPlist(session.dataFolder() + "/A.plist", bill("A", "Flat", -5));
  EXPECT_TRUE(menuBecomes({"Flat", "Water"}));

  settings({{"QMDueSoonDays", 90}});
  EXPECT_TRUE(menuBecomes({"Flat", "Water", "Tax"}));

  std::filesystem::rename(session.dataFolder(), session.dataFolder() + ".old");
  EXPECT_TRUE(menuBecomes({}));
  std::filesystem::remove_all(session.dataFolder());
  std::filesystem::rename(session.dataFolder() + ".old", session.dataFolder());
  EXPECT_TRUE(menuBecomes({"Flat", "Water", "Tax"}));
  session.putPlist(session.dataFolder() + "/B.plist", bill("B", "Well", -2));
  EXPECT_TRUE(menuBecomes({"Flat", "Well", "Tax"}));

  settings({{"QMCustomLocationEnabled", true}, {"QMCusomLocationTempPath", session.folder.path + "/elsewhere/bills"}});
  EXPECT_TRUE(menuBecomes({}));
  std::filesystem::create_directories(session.folder.path + "/elsewhere");
  std::filesystem::rename(session.dataFolder(), session.folder.path + "/elsewhere/bills");
  EXPECT_TRUE(menuBecomes({"Flat", "Well"}));
}

TEST_F(AgentTest, CountsDaysInTheNewTimeZoneAfterAChange) {
  using namespace std::chrono;
  const std::string zone = session.folder.path + "/zone";
  const auto moveTo = [&](const std::string& name) {
    std::filesystem::remove(zone);
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + name, zone);
  };
  // Nineteen hours apart: of today and the due day just one moves on to the next day, so the count must change.
  moveTo("Etc/GMT+5");
  session.timeZone = ":" + zone;
  const auto now = system_clock::now() - hours{5};
  const bool todayMovesOn = now - floor<days>(now) >= hours{5};
  Dictionary rent = bill("A", "Rent", 3);
  rent.set("DueDate", inDays(3) - hours{todayMovesOn ? 10 : 0});
  session.putPlist(session.dataFolder() + "/A.plist", rent);
  startAgent();
  EXPECT_EQ(panel->labels()[3], "Rent\nDue in 3 days");
  moveTo("Etc/GMT-14");
  list({"A", "B"});
  EXPECT_TRUE(panel->until(
      [&] { return panel->labels()[3] == (todayMovesOn ? "Rent\nDue in 2 days" : "Rent\nDue in 4 days"); }));
  EXPECT_EQ(panel->registered.size(), 1U);
}

TEST_F(AgentTest, ShowsWhatIsChosenInATerminalOrAtItsWebAddress) {
  const NamedPipe window(session.folder.path + "/window");
  Dictionary site = bill("B", "Water", -2);
  site.set("PaySite", "pay.example/me");
  session.putPlist(session.dataFolder() + "/B.plist", site);
  std::filesystem::create_directories(session.data() + "/applications");
  put(session.data() + "/applications/web.desktop",
      "[Desktop Entry]\nType=Application\nMimeType=x-scheme-handler/http;\nExec=\"" + session.folder.path +
          "/terminal\" 1 2 3 4 5 %u\n");
  startAgent();
  choose(0);
  EXPECT_EQ(window.nextText(), programs + "tallyvane overview\n");
  choose(2);
  EXPECT_EQ(window.nextText(), "http://pay.example/me\n");
  choose(3);
  EXPECT_EQ(window.nextText(), programs + "tallyvane show A\n");
}

TEST_F(AgentTest, ASecondStartHandsOverToTheFirstAndEnds) {
  const NamedPipe window(session.folder.path + "/window");
  startAgent();
  const auto second = session.start({programs + "tallyvane-agent"});
  EXPECT_EQ(window.nextText(), programs + "tallyvane overview\n");
  EXPECT_EQ(second->ended(), 0);
  EXPECT_EQ(session.start({programs + "tallyvane-agent", "com-quillmoor-tallyvanelaunch:///"})->ended(), 0);
  EXPECT_EQ(agent->ended(std::chrono::milliseconds{0}), std::nullopt);
}

TEST_F(AgentTest, EndsCleanlyWhenAskedAndLeavesNoPictureBehind) {
  for (const int signal : {SIGTERM, SIGINT}) {
    startAgent();
    agent->signal(signal);
    EXPECT_EQ(agent->ended(), 0) << agent->said();
    EXPECT_FALSE(session.isRunning());
    for (const auto& entry : std::filesystem::directory_iterator(session.folder.path + "/run"))
      EXPECT_EQ(entry.path().filename(), "dbus-1");
    panel.reset();
  }
}

TEST_F(AgentTest, EndsCleanlyWhenTheBusGoesAndSaysSoWhereThereIsNone) {
  startAgent();
  session.endBus();
  EXPECT_EQ(agent->ended(), 0) << agent->said();
  agent = session.start({programs + "tallyvane-agent"});
  EXPECT_EQ(agent->ended(), 1);
  EXPECT_THAT(agent->said(), HasSubstr("tallyvane-agent: cannot run, for the session bus at unix:path="));
}

}  // namespace
}  // namespace tallyvane::testing
