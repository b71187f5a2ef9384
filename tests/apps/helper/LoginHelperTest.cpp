#include "helper/LoginHelper.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "freedesktop/FileDescriptor.h"
#include "support/Fakes.h"
#include "support/InstalledPrograms.h"
#include "support/Matchers.h"

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
  FileDescriptor silent(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(silent.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(silent.number(), 1), 0);
  const Environment environment = [&](std::string_view name) -> std::optional<std::string> {
    return name == "DBUS_SESSION_BUS_ADDRESS" ? std::optional("unix:path=" + path) : std::nullopt;
  };
  RecordingLog log;
  EXPECT_EXIT(helper::runLoginHelper(environment, log, 200ms), ::testing::ExitedWithCode(0), "does not answer");
}

}  // namespace
}  // namespace tallyvane::testing
