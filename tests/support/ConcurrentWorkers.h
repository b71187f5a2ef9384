// Workers that each change the same bills by processes of the command line.
#pragma once

#include <chrono>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/CommandLineHome.h"

namespace tallyvane::testing {

/// What one of them has done, and so what must be there afterwards.
struct Done {
  std::map<std::string, std::string> bills;  ///< name to state
  std::multiset<std::string> notes;          ///< of payments, each written once
  std::set<std::string> tags;
  std::string setting;
  int counts[5] = {};  ///< operations by their kind
  std::vector<std::string> failures;
};

/// Each worker sets its own, so that a lost write shows.
struct Setting {
  const char* key;
  const char* values[2];
};
constexpr Setting settings[] = {{"QMDueSoonDays", {"3", "9"}},
                                {"QMAvoidWeekends", {"0", "1"}},
                                {"QMReminderCalendarNumber", {"0", "1"}},
                                {"QMXWhichSoundEffect", {"1", "2"}},
                                {"QMDontCountAuto", {"no", "yes"}},
                                {"QMRemindersTasks", {"no", "yes"}},
                                {"QMXPlayInterfaceSounds", {"no", "yes"}},
                                {"QMHideAutoMaticBillsInOverview", {"no", "yes"}},
                                {"QMShouldDisplayStatusTitle", {"no", "yes"}},
                                {"EnableStartAtLoginMenu", {"no", "yes"}}};

class Worker {
 public:
  Worker(CommandLineHome& home, unsigned number) : home_(home), number_(number), random_(2027 + number) {}

  /// One operation, chosen by the seed.
  void step() {
    const std::string id = std::to_string(number_) + "-" + std::to_string(++steps_);
    const auto kind = random_() % 5;
    ++done.counts[kind];
    if (kind == 0) add("Bill " + id);
    if (kind == 1) pay(id);
    if (kind == 2) tag("tag " + id);
    if (kind == 3) archive("Bill " + id);
    if (kind == 4) set();
  }

  Done done;

 private:
  bool works(const std::vector<std::string>& arguments) {
    const Said said = home_.run(arguments);
    if (said.status != 0) done.failures.push_back(arguments.front() + ": " + said.text);
    return said.status == 0;
  }
  void add(const std::string& name) {
    if (works({"add", name, "--due", "2027-03-13", "--repeat", "monthly", "--amount", "9"}))
      done.bills[name] = "active";
  }
  /// The shared bills that the test made first.
  std::string shared() { return "Shared " + std::to_string(random_() % 3); }
  void pay(const std::string& note) {
    if (works({"pay", shared(), "--amount", "1", "--note", note})) done.notes.insert(note);
  }
  void tag(const std::string& tag) {
    if (works({"edit", shared(), "--tag", tag})) done.tags.insert(tag);
  }
  void archive(const std::string& newName) {
    for (auto& [name, state] : done.bills) {
      if (state != "active") continue;
      if (works({"archive", name})) state = "archived";
      return;
    }
    add(newName);
  }
  void set() {
    const std::string value = settings[number_].values[random_() % 2];
    if (works({"settings", "set", settings[number_].key, value})) done.setting = value;
  }

  CommandLineHome& home_;
  unsigned number_;
  std::mt19937 random_;
  int steps_ = 0;
};

/// A run by hand may last: TALLYVANE_TEST_SECONDS says how long.
inline std::chrono::seconds secondsAsked() {
  const char* text = std::getenv("TALLYVANE_TEST_SECONDS");
  return std::chrono::seconds{text == nullptr ? 0 : std::atoi(text)};
}

inline void work(Worker& worker) {
  constexpr int fewest = 12;
  const auto end = std::chrono::steady_clock::now() + secondsAsked();
  for (int steps = 0; steps < fewest || std::chrono::steady_clock::now() < end; ++steps) worker.step();
}

}  // namespace tallyvane::testing
