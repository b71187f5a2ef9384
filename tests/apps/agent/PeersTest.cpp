#include "support/Peers.h"

#include <gmock/gmock.h>

#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST_F(CalendarPeers, KhalListsTheEventsOfTheFolder) {
  if (const auto why = absent({"khal"}); !why.empty()) GTEST_SKIP() << why;
  const std::string odd = R"(Gas; "A, B" C\D <&> حساب)" + std::string(100, 'x');
  remind("A", "Rent", 5, 3);
  remind("B", odd, 6, 3);
  startAgent();
  ASSERT_TRUE(panel->until([&] { return eventsIn(here()).size() == 2; }));
  put(file("khal.conf"), "[calendars]\n[[all]]\npath = " + session.data() +
                             "/calendars/*\ntype = discover\n[locale]\ndateformat = %Y-%m-%d\n"
                             "longdateformat = %Y-%m-%d\nlocal_timezone = " +
                             session.timeZone + "\n");
  const std::string list = said({"khal", "--no-color", "--config", file("khal.conf"), "list", "--day-format", "",
                                 "--format", "{calendar}: {start-date} {title}", "today", "30d"});
  EXPECT_EQ(list, "Tallyvane: " + dayText(5, "{:04}-{:02}-{:02}") +
                      " Pay Rent\nTallyvane: " + dayText(6, "{:04}-{:02}-{:02}") + " Pay " + odd + "\n");
}

TEST_F(CalendarPeers, VdirsyncerCarriesThemToAServerAndBack) {
  if (const auto why = absent({"radicale", "vdirsyncer"}); !why.empty()) GTEST_SKIP() << why;
  remind("A", "Rent", 5, 3);
  remind("B", "Water", 6, 3);
  startAgent();
  ASSERT_TRUE(panel->until([&] { return eventsIn(here()).size() == 2; }));
  startServer();
  discover();
  sync();
  const std::string rent = holding(here(), "Pay Rent");
  EXPECT_EQ(holding(onServer(), "SUMMARY:Pay Rent"), rent);
  const std::string water = holding(onServer(), "SUMMARY:Pay Water");
  std::string text = contentOf(onServer() + "/" + water);
  EXPECT_THAT(text, HasSubstr("TRIGGER;VALUE=DATE-TIME:"));

  // Somebody moves it to another day on their phone; it is found again by its title.
  const std::string day = "DTSTART;VALUE=DATE:";
  const auto at = text.find(day + dayText(6, plainDay));
  ASSERT_NE(at, std::string::npos) << text;
  text.replace(at, day.size() + 8, day + dayText(4, plainDay));
  putOnServer(water, text);
  sync();
  EXPECT_EQ(holding(here(), day + dayText(4, plainDay)), water);
  settings({{"QMReminderEvents", true}, {"QMReminderTime", inDays(0)}});
  ASSERT_TRUE(panel->until([&] { return !holding(here(), day + dayText(6, plainDay)).empty(); }));
  EXPECT_THAT(eventsIn(here()), SizeIs(2));
  sync();
  EXPECT_THAT(eventsIn(onServer()), SizeIs(2));
  EXPECT_NE(holding(onServer(), day + dayText(6, plainDay)), "");
}

TEST_F(NotificationPeers, ADaemonShowsThePopUpAndItsViewOpensTheBill) {
  if (const auto why = absent({"dunst", "Xvfb", "xdotool"}); !why.empty()) GTEST_SKIP() << why;
  const NamedPipe window(file("window"));
  remind("A", "Rent & <Gas>", 1, 3);
  startAgent();
  startScreen();
  ASSERT_FALSE(isShown());
  startDunst();
  ASSERT_TRUE(panel->until([&] { return isShown(); })) << contentOf(file("dunst-says"));
  EXPECT_THAT(center.delivered(), SizeIs(1));
  click();
  EXPECT_EQ(window.nextText(), programs + "tallyvane show A\n");
}

}  // namespace
}  // namespace tallyvane::testing
