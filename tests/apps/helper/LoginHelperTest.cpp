#include "helper/LoginHelper.h"

#include <gmock/gmock.h>

#include "support/Fakes.h"
#include "support/InstalledPrograms.h"
#include "support/Matchers.h"
#include "support/SilentPort.h"

namespace tallyvane::testing {
namespace {

using namespace std::chrono_literals;

std::vector<std::string> helperCommand() { return {programs + "tallyvane-helper", "--verbose"}; }

TEST(LoginHelper, StartsTheAgentThroughTheLaunchUrl) {
  TallyvaneSession session;
  ASSERT_FALSE(session.isRunning());
  const auto helper = session.start(helperCommand());
  EXPECT_EQ(helper->ended(), 0);
  EXPECT_EQ(helper->said(), "");
  EXPECT_TRUE(session.isRunning());
}

TEST(LoginHelper, OpensNothingWhenTheApplicationRuns) {
  TallyvaneSession session;
  const auto running = session.connect();
  int asked = 0;
  running->requestName("com.Quillmoor.Tallyvane");
  const auto slot = running->addMatch("type='method_call'", [&](sdbus::Message& /*message*/) { ++asked; });
  const auto helper = session.start(helperCommand());
  EXPECT_EQ(helper->ended(), 0);
  while (running->processPendingRequest()) {
  }
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(helper->said(), "");
}

TEST(LoginHelper, EndsWithoutABusAndSaysWhyNothingWasOpened) {
  TallyvaneSession session;
  session.endBus();
  const auto helper = session.start(helperCommand());
  EXPECT_EQ(helper->ended(), 0);
  EXPECT_THAT(helper->said(), HasSubstr("Cannot open com-quillmoor-tallyvanelaunch:///: the session bus at"));
}

TEST(LoginHelper, EndsWhenTheApplicationNeverReplies) {
  TallyvaneSession session;
  std::filesystem::create_directories(session.data() + "/applications");
  put(session.data() + "/applications/com.example.Dead.desktop",
      "[Desktop Entry]\nType=Application\nDBusActivatable=true\n"
      "MimeType=x-scheme-handler/com-quillmoor-tallyvanelaunch;\n");
  const auto dead = session.connect();
  dead->requestName("com.example.Dead");
  RecordingLog log;
  helper::runLoginHelper(session.environment(), log, 2s);
  EXPECT_THAT(log.diagnostics, ElementsAre(HasSubstr("com.example.Dead did not answer within 2 s")));
}

TEST(LoginHelperDeathTest, EndsWhenTheBusTakesTheConnectionAndSaysNothing) {
  TemporaryFolder folder;
  const std::string path = folder.path + "/bus";
  const SilentSocket silent(path);
  const Environment environment = [&](std::string_view name) -> std::optional<std::string> {
    return name == "DBUS_SESSION_BUS_ADDRESS" ? std::optional("unix:path=" + path) : std::nullopt;
  };
  RecordingLog log;
  EXPECT_EXIT(helper::runLoginHelper(environment, log, 200ms), ::testing::ExitedWithCode(0), "does not answer");
}

}  // namespace
}  // namespace tallyvane::testing
