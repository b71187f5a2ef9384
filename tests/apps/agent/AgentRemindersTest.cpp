#include "support/AgentReminders.h"

#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/NamedPipe.h"

namespace tallyvane::testing {
namespace {

TEST_F(AgentRemindersTest, WhatCameDueWhileTheAgentWasAwayIsShownOnceHoweverOftenItStarts) {
  FakeNotificationService service(session);
  remind("A", "Rent & <Gas>", 1, 3);
  for (int start = 0; start < 2; ++start) {
    startAgent();
    ASSERT_TRUE(service.hasShown(1)) << agent->said();
    ASSERT_TRUE(service.until([&] { return center.delivered().size() == 1; }));
    agent->signal(SIGTERM);
    EXPECT_EQ(agent->ended(), 0);
    panel.reset();
  }
  remind("B", "Water", 2, 5);
  startAgent();
  ASSERT_TRUE(service.hasShown(2));
  EXPECT_THAT(service.titles(), ElementsAre("Pay Rent & <Gas>", "Pay Water"));
  EXPECT_THAT(service.shown[0].text, StartsWith("Bill is due on "));
  EXPECT_THAT(service.shown[0].actions, ElementsAre("view", "View"));
  EXPECT_EQ(service.shown[0].expires, 0);
  EXPECT_TRUE(service.until([&] { return center.delivered().size() == 2; }));
  EXPECT_THAT(service.closed, SizeIs(0));
}

TEST_F(AgentRemindersTest, AnAgentThatIsKilledBeforeTheServiceAnswersHasShownIt) {
  FakeNotificationService service(session);
  service.asked = [&] { agent->signal(SIGKILL); };
  remind("A", "Rent", 1, 3);
  startAgent();
  ASSERT_TRUE(service.hasShown(1));
  EXPECT_EQ(agent->ended(), 1000 + SIGKILL);
  service.asked = nullptr;
  panel.reset();
  remind("B", "Water", 2, 5);
  startAgent();
  ASSERT_TRUE(service.hasShown(2));
  EXPECT_THAT(service.titles(), ElementsAre("Pay Rent", "Pay Water"));
  EXPECT_THAT(center.delivered(), SizeIs(2));
}

TEST_F(AgentRemindersTest, DeliversAtItsTimeAndClosesWhatIsRemoved) {
  FakeNotificationService service(session);
  startAgent();
  schedule("A", now() + std::chrono::hours{1});
  schedule("B", now() + std::chrono::seconds{2});
  ASSERT_TRUE(service.hasShown(1));
  EXPECT_THAT(service.titles(), ElementsAre("Pay B"));
  ASSERT_TRUE(service.until([&] { return center.delivered().size() == 1; }));
  ASSERT_TRUE(center.removeDelivered(center.delivered()[0]));
  ASSERT_TRUE(service.until([&] { return !service.closed.empty(); }));
  EXPECT_THAT(service.closed, ElementsAre(service.shown[0].number));
  EXPECT_THAT(center.scheduled(), SizeIs(1));
}

TEST_F(AgentRemindersTest, ViewOpensTheBillAsTheMenuDoes) {
  const NamedPipe window(session.folder.path + "/window");
  FakeNotificationService service(session);
  remind("A", "Rent", 1, 3);
  startAgent();
  ASSERT_TRUE(service.hasShown(1));
  ASSERT_TRUE(service.until([&] { return center.delivered().size() == 1; }));
  service.press(service.shown[0].number + 1, "view");
  service.press(service.shown[0].number, "default");
  service.press(service.shown[0].number, "view");
  EXPECT_EQ(window.nextText(), programs + "tallyvane show A\n");
}

TEST_F(AgentRemindersTest, WithoutAServiceThatShowsThemTheScheduleWaits) {
  remind("A", "Rent", 1, 3);
  startAgent();
  ASSERT_TRUE(panel->until([&] { return center.scheduled().size() == 1; }));
  FakeNotificationService service(session);
  ASSERT_TRUE(service.hasShown(1));
  ASSERT_TRUE(service.until([&] { return center.scheduled().empty(); }));
  service.refusing = true;
  schedule("B", now());
  schedule("C", now() + std::chrono::seconds{2});
  EXPECT_TRUE(service.until([&] { return service.refused >= 2 && center.scheduled().size() == 2; }));
}

TEST_F(AgentRemindersTest, AChangeOfTheReminderSettingsRebuildsAllReminders) {
  remind("A", "Rent", 5, 3);
  startAgent();
  const auto scheduled = [&](std::size_t count) {
    return panel->until([&] { return center.scheduled().size() == count; });
  };
  ASSERT_TRUE(scheduled(1));
  const Date before = center.scheduled()[0].deliveryDate;
  settings({{"QMEnableNotificationCenter", true}, {"QMReminderTime", inDays(0) + std::chrono::minutes{30}}});
  ASSERT_TRUE(
      panel->until([&] { return center.scheduled().size() == 1 && center.scheduled()[0].deliveryDate != before; }));
  EXPECT_EQ(center.scheduled()[0].deliveryDate, inDays(2) + std::chrono::minutes{30});
  settings({{"QMReminderEvents", true}});
  ASSERT_TRUE(scheduled(0));
  const std::string calendar = session.data() + "/calendars/Tallyvane";
  ASSERT_TRUE(panel->until([&] { return files.list(calendar) && files.list(calendar)->size() == 2; }));
  settings({});
  EXPECT_TRUE(panel->until([&] { return files.list(calendar)->size() == 1; }));
}

}  // namespace
}  // namespace tallyvane::testing
