// Bills for tests. Keys are literals here on purpose.
#pragma once

#include <string>

#include "storage/QMBill.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

inline const std::string dataFolder = "/home/ada/.local/share/Tallyvane/Tallyvane.tvdata";

inline std::string inDataFolder(const std::string& name) { return dataFolder + "/" + name; }

/// Noon of a day in New York in winter, 13:00 in summer.
inline Date noon(int year, unsigned month, unsigned day) {
  return std::chrono::sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} +
         std::chrono::hours{17};
}

inline Date daysFromToday(int days) { return noon(2027, 3, 10) + std::chrono::days{days}; }

/// A monthly bill with all 19 keys in their order.
inline Dictionary bill(const std::string& bid, const std::string& name, Date due) {
  return {{"Name", name},
          {"Bid", bid},
          {"Icon", "32x32-House"},
          {"DueDate", due},
          {"Repeat", Array{1, 2}},
          {"Average", 1.5},
          {"LastPayment", distantPast},
          {"TotalPaid", 2.5},
          {"RemindMe", false},
          {"PaySite", "http://pay"},
          {"PaymentList", Array()},
          {"ReminderDays", 3},
          {"Balance", 3.5},
          {"Interest", 0.25},
          {"Notes", "by post"},
          {"Tags", Array{"Home"}},
          {"Amount", 100.0},
          {"PayType", 0},
          {"Rev", 4.5}};
}

inline Dictionary with(Dictionary dictionary, std::string_view key, Value value) {
  dictionary.set(key, std::move(value));
  return dictionary;
}

inline Dictionary without(Dictionary dictionary, std::string_view key) {
  dictionary.erase(key);
  return dictionary;
}

/// A payment as a bill's list holds it.
inline Dictionary entry(Value amount, Value date) {
  return {{"Amount", std::move(amount)}, {"Date", std::move(date)}, {"Note", ""}, {"Receipt", ""}};
}

/// The same bill as an object.
inline QMBill billObject(const Platform& platform, const std::string& bid, const std::string& name, Date due) {
  QMBill object{platform};
  object.name = name;
  object.bid = bid;
  object.icon = "32x32-House";
  object.dueDate = due;
  object.repeat = Array{1, 2};
  object.average = Value(1.5);
  object.totalPaid = Value(2.5);
  object.balance = Value(3.5);
  object.interest = Value(0.25);
  object.rev = Value(4.5);
  object.lastPayment = distantPast;
  object.remindMe = Value(false);
  object.paySite = "http://pay";
  object.notes = "by post";
  object.paymentList = Array();
  object.reminderDays = Value(3);
  object.amount = Value(100.0);
  object.payType = Value(0);
  object.tags = Array{"Home"};
  return object;
}

/// The bill index, and a dictionary file of the data folder (empty when it is none).
inline Dictionary index(const Array& active, const Array& deleted, const Array& archived) {
  return {{"ActiveBills", active}, {"DeletedBills", deleted}, {"ArchivedBills", archived}};
}

inline void putIndex(FakeDesktop& desktop, const Dictionary& content) {
  desktop.files.putPlist(inDataFolder("billindex.plist"), content);
}

inline Dictionary fileOf(FakeDesktop& desktop, const std::string& name) {
  const Value root = desktop.files.plist(inDataFolder(name));
  return root.is<Dictionary>() ? *root.get<Dictionary>() : Dictionary();
}

inline Dictionary indexOf(FakeDesktop& desktop) { return fileOf(desktop, "billindex.plist"); }

/// Puts bill files and an index that lists them as active into the data folder.
inline void putActiveBills(FakeDesktop& desktop, const std::vector<Dictionary>& bills) {
  Array active;
  for (const Dictionary& each : bills) {
    const std::string bid = *each.get<std::string>("Bid");
    desktop.files.putPlist(inDataFolder(bid + ".plist"), each);
    active.emplace_back(bid);
  }
  desktop.files.putPlist(inDataFolder("billindex.plist"), index(active, Array(), Array()));
}

/// A word table in which every word that is looked up shows.
inline std::string bracketed(std::string_view word) { return "[" + std::string(word) + "]"; }

/// The names of a dictionary's keys, in their order.
inline std::vector<std::string> keysOf(const Dictionary& dictionary) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : dictionary) keys.push_back(key);
  return keys;
}

/// "Name" (or another string key) of each row.
inline std::vector<std::string> column(const std::vector<Dictionary>& rows, std::string_view key = "Name") {
  std::vector<std::string> texts;
  for (const Dictionary& row : rows) texts.push_back(row.valueOr(key, std::string("(none)")));
  return texts;
}

}  // namespace tallyvane::testing
