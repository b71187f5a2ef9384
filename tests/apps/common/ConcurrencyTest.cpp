// Real processes of the command line that write at the same time.
#include <gmock/gmock.h>

#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <thread>

#include "support/CommandLineHome.h"

namespace tallyvane::testing {
namespace {

using nlohmann::json;
using Strings = std::vector<std::string>;

/// What one of them has done, and so what must be there afterwards.
struct Done {
  std::map<std::string, std::string> bills;  ///< name to state
  std::multiset<std::string> notes;          ///< of payments, each written once
  std::set<std::string> tags;
  std::string setting;
  int counts[5] = {};  ///< operations by their kind
  Strings failures;
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
  bool works(const Strings& arguments) {
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
std::chrono::seconds secondsAsked() {
  const char* text = std::getenv("TALLYVANE_TEST_SECONDS");
  return std::chrono::seconds{text == nullptr ? 0 : std::atoi(text)};
}

void work(Worker& worker) {
  constexpr int fewest = 12;
  const auto end = std::chrono::steady_clock::now() + secondsAsked();
  for (int steps = 0; steps < fewest || std::chrono::steady_clock::now() < end; ++steps) worker.step();
}

TEST(Concurrency, TenProcessesThatWriteAtOnceLoseNothing) {
  CommandLineHome home;
  for (const char* name : {"Shared 0", "Shared 1", "Shared 2"})
    ASSERT_EQ(home.run({"add", name, "--due", "2027-03-13", "--repeat", "monthly", "--amount", "9"}).status, 0);
  std::vector<Worker> workers;
  for (unsigned i = 0; i < std::size(settings); ++i) workers.emplace_back(home, i);
  {
    std::vector<std::jthread> threads;
    for (Worker& worker : workers) threads.emplace_back([&worker] { work(worker); });
  }
  std::map<std::string, std::string> states;
  std::multiset<std::string> notes;
  const json exported = json::parse(home.run({"export", "--json"}).text);
  for (const json& bill : exported.at("bills")) {
    EXPECT_TRUE(states.emplace(bill.at("name"), bill.at("state")).second) << bill.at("name") << " twice";
    for (const json& payment : bill.at("payments")) notes.insert(payment.at("note").get<std::string>());
  }
  const json tagList = json::parse(home.run({"tags", "--json"}).text);
  const std::set<std::string> tags(tagList.begin(), tagList.end());

  int counts[5] = {};
  std::map<std::string, std::string> bills{{"Shared 0", "active"}, {"Shared 1", "active"}, {"Shared 2", "active"}};
  std::multiset<std::string> paid;
  std::set<std::string> tagged;
  for (std::size_t i = 0; i < workers.size(); ++i) {
    const Done& done = workers[i].done;
    EXPECT_THAT(done.failures, ::testing::IsEmpty());
    bills.insert(done.bills.begin(), done.bills.end());
    paid.insert(done.notes.begin(), done.notes.end());
    tagged.insert(done.tags.begin(), done.tags.end());
    for (int kind = 0; kind < 5; ++kind) counts[kind] += done.counts[kind];
    if (done.setting.empty()) continue;
    EXPECT_EQ(home.run({"settings", "get", settings[i].key}).text, done.setting + "\n");
  }
  EXPECT_EQ(states, bills);
  EXPECT_EQ(notes, paid);
  EXPECT_EQ(tags, tagged);
  const Said checked = home.run({"check"});
  EXPECT_EQ(checked.status, 0) << checked.text;
  std::cout << counts[0] << " added, " << counts[1] << " paid, " << counts[2] << " tagged, " << counts[3]
            << " archived or added, " << counts[4] << " set\n";
}

}  // namespace
}  // namespace tallyvane::testing
