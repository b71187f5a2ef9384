// Real processes of the command line that write at the same time.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <thread>

#include "support/ConcurrentWorkers.h"

namespace tallyvane::testing {
namespace {

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
  const auto exported = nlohmann::json::parse(home.run({"export", "--json"}).text);
  for (const auto& bill : exported.at("bills")) {
    EXPECT_TRUE(states.emplace(bill.at("name"), bill.at("state")).second) << bill.at("name") << " twice";
    for (const auto& payment : bill.at("payments")) notes.insert(payment.at("note").get<std::string>());
  }
  const auto tagList = nlohmann::json::parse(home.run({"tags", "--json"}).text);
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
