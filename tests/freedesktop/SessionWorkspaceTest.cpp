#include "freedesktop/SessionWorkspace.h"

#include <gmock/gmock.h>

#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/NamedPipe.h"
#include "support/PrivateSession.h"
#include "support/WorkspaceSession.h"

namespace tallyvane::testing {
namespace {

TEST_F(SessionWorkspaceTest, AnApplicationThatRunsAndTakesTheUrlOpensItOverTheBus) {
  install("com.example.Bill-View.desktop", "bill", "DBusActivatable=true\n");
  const BillView application(session);
  // Applications are the names that somebody owns, not the connections.
  EXPECT_THAT(workspace.runningApplications(), AllOf(Contains("com.example.Bill-View"), Each(Not(StartsWith(":")))));
  application.connection->enterEventLoopAsync();
  EXPECT_EQ(workspace.openUrl("BILL://rent?x=1").error(), "");
  application.connection->leaveEventLoop();
  EXPECT_THAT(application.opened, ElementsAre("BILL://rent?x=1"));
}

TEST_F(SessionWorkspaceTest, AnApplicationThatNeverRepliesIsAnErrorAfterTheLimit) {
  install("com.example.Dead.desktop", "bill", "DBusActivatable=true\n");
  const auto dead = session.connect();
  dead->requestName("com.example.Dead");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(workspace.openUrl("bill:").error(), "com.example.Dead did not answer within 2 s");
  // Without the limit it would be the bus library's own, 25 seconds.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{10});
}

TEST_F(SessionWorkspaceTest, NobodyWaitsForAnApplicationThatIsAskedToOpenLater) {
  install("com.example.Dead.desktop", "bill", "DBusActivatable=true\n");
  install("com.example.Bill-View.desktop", "view", "DBusActivatable=true\n");
  const auto dead = session.connect();
  dead->requestName("com.example.Dead");
  const BillView alive(session);
  std::vector<std::string> told;
  const auto tell = [&](const std::string& url) {
    return [&, url](const Result<>& opened) { told.push_back(url + " " + opened.error()); };
  };
  for (const char* url : {"bill:x", "view:y", "none:z"}) workspace.startOpeningUrl(url, tell(url));
  EXPECT_THAT(told, ElementsAre("none:z no installed application opens none URLs"));
  ASSERT_TRUE(waitUntil({*bus.connection(), alive.connection.get()}, [&] { return told.size() == 3; }));
  EXPECT_EQ(told[1], "view:y ");
  EXPECT_EQ(told[2], "bill:x com.example.Dead did not answer within 2 s");
}

TEST_F(SessionWorkspaceTest, AProgramIsStartedWithTheUrlAndNoShellReadsIt) {
  const NamedPipe pipe(session.folder.path + "/pipe");
  const std::string program = session.folder.path + "/view bill";
  put(program, "#!/bin/sh\nprintf '%s|' \"$@\" >'" + session.folder.path + "/pipe'\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  install("view.desktop", "bill", "Exec=\"" + program + "\" --open %u\n");
  EXPECT_EQ(workspace.openUrl("bill:$(id)'; `id`").error(), "");
  EXPECT_EQ(pipe.nextText(), "--open|bill:$(id)'; `id`|");
}

TEST_F(SessionWorkspaceTest, WhatCannotBeOpenedIsSaidInAClearSentence) {
  install("gone.desktop", "gone", "Exec=/no/such/program %u\n");
  install("com.example.Absent.desktop", "absent", "DBusActivatable=true\n");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"nothing", "'nothing' is not a URL"},
      {"1x:y", "'1x:y' is not a URL"},
      {"unclaimed:x", "no installed application opens unclaimed URLs"},
      {"gone:x", "gone.desktop: there is no program '/no/such/program'"},
      {"absent:x", "com.example.Absent could not be reached"},
  };
  for (const auto& [url, sentence] : cases) EXPECT_THAT(workspace.openUrl(url).error(), HasSubstr(sentence));
}

TEST_F(SessionWorkspaceTest, WithoutABusNothingRunsAndTheReasonIsLogged) {
  install("com.example.Absent.desktop", "absent", "DBusActivatable=true\n");
  for (const std::string& address : {std::string(), "unix:path=" + session.folder.path + "/nobody"}) {
    SessionBus none(address);
    SessionWorkspace lonely(none, files, SessionEnvironment::of(session.environment()), log);
    log.diagnostics.clear();
    EXPECT_THAT(lonely.runningApplications(), IsEmpty());
    EXPECT_THAT(log.diagnostics, ElementsAre(HasSubstr("session bus")));
    EXPECT_THAT(lonely.openUrl("absent:").error(), HasSubstr("session bus"));
  }
}

}  // namespace
}  // namespace tallyvane::testing
