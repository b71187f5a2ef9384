// The agent as built, in a private session with bills and a panel.
#pragma once

#include <gtest/gtest.h>

#include <chrono>

#include "support/FakePanel.h"
#include "support/InstalledPrograms.h"

namespace tallyvane::testing {

/// Noon in the zone of the session, so many days from now.
inline Date inDays(int days) {
  return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now() - std::chrono::hours{5}) +
         std::chrono::days{days} + std::chrono::hours{17};
}

inline Dictionary bill(const std::string& bid, const std::string& name, int days) {
  return {{"Name", name},          {"Bid", bid},    {"Icon", "32x32-House"},  {"DueDate", inDays(days)},
          {"Repeat", Array{1, 2}}, {"PaySite", ""}, {"PaymentList", Array()}, {"Tags", Array()},
          {"Amount", 100.0},       {"PayType", 0}};
}

/// The agent in a session with two bills due soon, one due later, and a panel.
class AgentTest : public ::testing::Test {
 protected:
  AgentTest() {
    session.putPlist(session.dataFolder() + "/A.plist", bill("A", "Rent", 3));
    session.putPlist(session.dataFolder() + "/B.plist", bill("B", "Water", -2));
    session.putPlist(session.dataFolder() + "/C.plist", bill("C", "Tax", 60));
    list({"A", "B", "C"});
  }

  void list(const std::vector<std::string>& bids) {
    session.putPlist(session.dataFolder() + "/billindex.plist", Dictionary{{"ActiveBills", arrayOf(bids)}});
  }
  void settings(const Dictionary& values) {
    std::filesystem::create_directories(session.config() + "/Tallyvane");
    session.putPlist(session.config() + "/Tallyvane/com.Quillmoor.Tallyvane.plist", values);
  }
  /// The bill is due in so many days and asks to be reminded so many days before.
  void remind(const std::string& bid, const std::string& name, int due, int before) {
    Dictionary reminding = bill(bid, name, due);
    reminding.set("RemindMe", true);
    reminding.set("ReminderDays", before);
    session.putPlist(session.dataFolder() + "/" + bid + ".plist", reminding);
  }
  void startAgent() {
    panel = std::make_unique<FakePanel>(session);
    agent = session.start({programs + "tallyvane-agent"});
    ASSERT_TRUE(panel->hasItem()) << agent->said();
    panel->follow();
    ASSERT_TRUE(panel->until([&] { return panel->labels().size() > 3; }));
  }
  /// The names of the bills in the menu.
  std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const std::string& label : panel->labels()) {
      if (label.find('\n') != std::string::npos) all.push_back(label.substr(0, label.find('\n')));
    }
    return all;
  }
  /// Waits for signals of the panel until the menu has these bills.
  bool menuBecomes(const std::vector<std::string>& expected) {
    return panel->until([&] { return names() == expected; });
  }
  void choose(std::size_t position) { EXPECT_EQ(panel->click(panel->items()[position].get<0>()), std::nullopt); }

  TallyvaneSession session;
  std::unique_ptr<ChildProcess> agent;
  std::unique_ptr<FakePanel> panel;
};

}  // namespace tallyvane::testing
