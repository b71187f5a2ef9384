// A desktop on which a person has asked for reminders.
#pragma once

#include <gtest/gtest.h>

#include "reminders/QMReminderManager.h"
#include "support/Bills.h"

namespace tallyvane::testing {

/// An instant that reads as this on a clock in New York in winter.
inline Date winterTime(int year, unsigned month, unsigned day, int hour, int minute) {
  return std::chrono::sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} +
         std::chrono::hours{hour + 5} + std::chrono::minutes{minute};
}

struct Reminders : ::testing::Test {
  Reminders() {
    desktop.defaults.content.set("QMCalendarList", Array{"Home", "Bills"});
    desktop.defaults.content.set("QMReminderCalendarNumber", 1);
    desktop.defaults.content.set("QMReminderTime", winterTime(2000, 1, 1, 9, 30));
    desktop.defaults.content.set("QMReminderEvents", true);
    desktop.defaults.content.set("QMEnableNotificationCenter", true);
  }
  static Dictionary reminding(const std::string& bid, const std::string& name, Date due) {
    return with(bill(bid, name, due), "RemindMe", true);
  }
  FakeDesktop desktop;
};

}  // namespace tallyvane::testing
