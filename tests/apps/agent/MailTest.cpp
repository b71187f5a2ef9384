#include <gmock/gmock.h>

#include "support/AgentMail.h"
#include "support/AgentSession.h"
#include "support/SilentPort.h"
#include "support/WebServer.h"

namespace tallyvane::testing {
namespace {

TEST_F(AgentMail, SendsADueReminderOnceAndNotAgainAfterARestart) {
  startAgent();
  ASSERT_TRUE(panel->until([&] { return !server.requests().empty(); }));
  EXPECT_THAT(server.requests(),
              HasSubstr("&to=ada%40example.org&subject=Bill%20Due%20Soon%3A%20Rent&body_html=%3C%21DOCTYPE"));
  EXPECT_TRUE(endsWell());
  EXPECT_THAT(pending(), ElementsAre());
  const std::string once = server.requests();
  panel.reset();
  startAgent();
  EXPECT_TRUE(endsWell());
  EXPECT_EQ(server.requests(), once);
}

TEST_F(AgentMail, AMessageOnItsWayIsNotLostWhoeverEndsOrKillsAProgram) {
  const auto start = [this](const char* program) {
    const bool isAgent = program == std::string("agent");
    return isAgent ? session.start({programs + "tallyvane-agent"})
                   : session.start({programs + "tallyvane", "mail", "check"});
  };
  const struct {
    const char* ended;
    int signal;
    int status;
    const char* next;
  } cases[] = {{"check", SIGTERM, 1, "check"},
               {"check", SIGKILL, 1000 + SIGKILL, "agent"},
               {"agent", SIGTERM, 0, "check"},
               {"agent", SIGKILL, 1000 + SIGKILL, "check"}};
  std::size_t sent = 0;
  for (const auto& c : cases) {
    const SilentPort silent;
    setUpService(silent.number());
    std::filesystem::remove(session.dataFolder() + "/mailindex.plist");
    const auto ended = start(c.ended);
    ASSERT_TRUE(waitUntil({}, [&] { return !queue().empty() && pending().empty(); })) << ended->said();
    ended->signal(c.signal);
    EXPECT_EQ(ended->ended(), c.status) << ended->said();
    EXPECT_THAT(pending(), SizeIs(c.signal == SIGKILL ? 0 : 1));
    setUpService(server.https);
    const auto next = start(c.next);
    EXPECT_TRUE(waitUntil({}, [&] { return server.requests().size() > sent; })) << next->said();
    sent = server.requests().size();
    if (next->ended(std::chrono::seconds{5})) continue;
    next->signal(SIGTERM);
    EXPECT_EQ(next->ended(), 0);
  }
}

TEST_F(AgentMail, ProgramsThatQueueAtOnceLoseNothingOfEachOther) {
  std::vector<std::string> bids;
  for (int i = 0; i < 20; ++i) {
    bids.push_back("M" + std::to_string(i));
    remind(bids.back(), "Bill " + std::to_string(i), 3, 0);
  }
  list(bids);
  setUpService(server.closing);
  // Each queues all of them, offers them, and puts back one after the other what was not taken.
  std::vector<std::unique_ptr<ChildProcess>> others;
  for (int i = 0; i < 3; ++i) others.push_back(session.start({programs + "tallyvane", "mail", "check"}));
  for (const auto& other : others) EXPECT_TRUE(other->ended(std::chrono::seconds{60})) << other->said();
  EXPECT_THAT(pending(), SizeIs(20));
  EXPECT_THAT(queue(), SizeIs(21));
}

}  // namespace
}  // namespace tallyvane::testing
