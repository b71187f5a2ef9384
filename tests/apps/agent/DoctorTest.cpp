#include <gmock/gmock.h>

#include "support/AgentSession.h"
#include "support/FakeNotificationService.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST_F(AgentTest, TheDoctorSeesWhatOfTheSessionIsThereWithoutStartingAnything) {
  settings({{"QMEnableNotificationCenter", true}});
  const auto examine = [&] {
    const auto doctor = session.start({programs + "tallyvane", "doctor"});
    const auto over = [&] { return doctor->ended(std::chrono::milliseconds{0}).has_value(); };
    EXPECT_TRUE(panel ? panel->until(over) : doctor->ended().has_value());
    return doctor->said();
  };
  const std::string bare = examine();
  EXPECT_THAT(bare, HasSubstr("Bills\tworks\t3 bills in " + session.dataFolder()));
  EXPECT_THAT(bare, HasSubstr("Session bus\tworks"));
  EXPECT_THAT(bare, HasSubstr("Tallyvane agent\tlacking"));
  EXPECT_THAT(bare, HasSubstr("Launching\tworks\t" + session.dataDirs));
  EXPECT_THAT(bare, HasSubstr("Start at login\tlacking"));
  EXPECT_THAT(bare, HasSubstr("Tray menu\tlacking"));
  EXPECT_THAT(bare, HasSubstr("Notifications\tbroken"));
  EXPECT_FALSE(session.isRunning());

  startAgent();
  const FakeNotificationService notifications(session);
  const std::string full = examine();
  EXPECT_THAT(full, HasSubstr("Tallyvane agent\tworks"));
  EXPECT_THAT(full, HasSubstr("Notifications\tworks"));
  EXPECT_THAT(full, HasSubstr("Tray menu\tworks"));

  panel.reset();
  session.endBus();
  EXPECT_THAT(examine(), HasSubstr("Session bus\tlacking"));
}

}  // namespace
}  // namespace tallyvane::testing
