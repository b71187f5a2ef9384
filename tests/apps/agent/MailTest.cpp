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

TEST_F(AgentMail, AMessageOnItsWayAtTheEndIsPutBack) {
  const SilentPort silent;
  setUpService(silent.number());
  startAgent();
  ASSERT_TRUE(panel->until([&] { return !queue().empty() && pending().empty(); }));  // queued, then offered
  EXPECT_TRUE(endsWell());
  EXPECT_THAT(pending(), ElementsAre("Rent"));
}

}  // namespace
}  // namespace tallyvane::testing
