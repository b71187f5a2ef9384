#include "Household.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

#include "foundation/PropertyList.h"

namespace tallyvane::bench {
namespace {

using Random = std::mt19937_64;

constexpr std::array names = {
    "Electricity",   "Miete für die Wohnung", "Électricité de l'été", "水道料金 🚰",     "Интернет",
    "Αέριο & Ζέστη", "Vodné a stočné",        "תשלום ביטוח",          "Phone <mobile>", "Zażółć gęślą jaźń",
    "ค่าไฟฟ้า",        "Car 🚗 insurance"};
constexpr std::array notes = {
    "", "", "", "paid by card", "Überweisung", "メモ: 二回払い", "late, with the fee of March"};
constexpr std::array tagNames = {"home", "car", "Familie", "仕事", "fun"};

template <typename List>
auto oneOf(const List& list, Random& random) {
  return list[random() % list.size()];
}

double amount(Random& random) { return static_cast<double>(500 + random() % 30000) / 100; }

Array payments(std::size_t count, Random& random) {
  Array list;
  for (std::size_t left = count; left > 0; --left) {
    const Date date = FixedClock::today - std::chrono::days{30 * left} + std::chrono::seconds{random() % 86400};
    list.emplace_back(
        Dictionary{{"Amount", amount(random)}, {"Date", date}, {"Note", oneOf(notes, random)}, {"Receipt", ""}});
  }
  return list;
}

Date dueDate(Random& random) {
  if (random() % 40 == 0) return distantFuture;
  return std::chrono::floor<std::chrono::days>(FixedClock::today) + std::chrono::days{random() % 400} -
         std::chrono::days{40} + std::chrono::hours{5};
}

Dictionary makeBill(std::size_t number, std::size_t paymentsEach, Random& random) {
  return {{"Name", fmt::format("{} {}", oneOf(names, random), number)},
          {"Bid", fmt::format("{:016X}{:016X}", random(), random())},
          {"Icon", "house.png"},
          {"DueDate", dueDate(random)},
          {"Repeat", Array{1 + random() % 3, random() % 5}},
          {"Average", amount(random)},
          {"LastPayment", FixedClock::today - std::chrono::days{30}},
          {"TotalPaid", amount(random) * 30},
          {"RemindMe", false},
          {"PaySite", "https://pay.example/account"},
          {"PaymentList", payments(paymentsEach == 0 ? 12 + random() % 49 : paymentsEach, random)},
          {"ReminderDays", 3},
          {"Balance", 0},
          {"Interest", 0.0},
          {"Notes", "customer 4711-0815"},
          {"Tags", Array{oneOf(tagNames, random)}},
          {"Amount", amount(random)},
          {"PayType", random() % 4 == 0 ? 1 : 0},
          {"Rev", 0}};
}

void put(const std::string& path, const Value& value) {
  std::ofstream file(path, std::ios::binary);
  file << writePropertyList(value);
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Household::Household(std::size_t bills, std::size_t paymentsEach) {
  const std::string data = folder() + "/Tallyvane/Tallyvane.tvdata";
  std::filesystem::create_directories(data);
  indexFile_ = data + "/billindex.plist";
  tagFile_ = data + "/tagindex.plist";
  Random random(bills);
  Array active;
  for (std::size_t number = 0; number < bills; ++number) {
    const Dictionary bill = makeBill(number, paymentsEach, random);
    const auto& bid = *bill.get<std::string>("Bid");
    active.emplace_back(bid);
    billFiles_.push_back(data + "/" + bid + ".plist");
    put(billFiles_.back(), bill);
  }
  put(indexFile_, Dictionary{{"ActiveBills", active}, {"DeletedBills", Array()}, {"ArchivedBills", Array()}});
  put(tagFile_, Array(tagNames.begin(), tagNames.end()));
  ::sync();  // so that no later measurement waits for these
}

Household& Household::of(std::size_t bills) {
  static std::unique_ptr<Household> kept;
  if (kept == nullptr || kept->billFiles().size() != bills) {
    kept.reset();
    kept = std::make_unique<Household>(bills);
  }
  return *kept;
}

Dictionary Household::bill(std::size_t number) const {
  const Result<Value> value = readPropertyList(bytesOf(billFiles_.at(number)));
  return *value->get<Dictionary>();
}

std::size_t readAll(const std::vector<std::string>& paths) {
  static std::vector<char> buffer(std::size_t{1} << 20);
  std::size_t total = 0;
  for (const std::string& path : paths) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t count = ::read(file, buffer.data(), buffer.size());
    ::close(file);
    if (count < 0) throw std::runtime_error("cannot read " + path);
    total += static_cast<std::size_t>(count);
  }
  return total;
}

}  // namespace tallyvane::bench
