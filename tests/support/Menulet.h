// A status menu on a desktop where a person wants one.
#pragma once

#include <gtest/gtest.h>

#include "helper/QMHelperMenulet.h"
#include "support/Bills.h"

namespace tallyvane::testing {

inline Dictionary row(const std::string& name, int dueIn, int payType = 0) {
  Dictionary made = with(bill("bid of " + name, name, daysFromToday(dueIn)), "PayType", payType);
  made.set("SortableDueDate", dueIn * 86400);
  made.set("HumanDueDate", "Due in " + std::to_string(dueIn) + " days");
  return made;
}

inline std::vector<std::string> titles(const Menu& menu) {
  std::vector<std::string> texts;
  for (const MenuEntry& entry : menu.entries) {
    texts.push_back(entry.kind == MenuEntry::Kind::separator ? "---" : entry.title);
  }
  return texts;
}

struct Menulet : ::testing::Test {
  Menulet() {
    desktop.defaults.content.set("EnableStartAtLoginMenu", true);
    desktop.defaults.content.set("QMShouldDisplayStatusTitle", true);
    desktop.defaults.content.set("QMDueSoonDays", 3);
  }
  FakeDesktop desktop;
  QMHelperMenulet menulet{desktop.platform};
};

}  // namespace tallyvane::testing
