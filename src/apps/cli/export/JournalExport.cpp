#include <fmt/format.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <sstream>

#include "cli/bills/BillText.h"
#include "cli/export/Exports.h"
#include "cli/export/PlainDecimal.h"
#include "cli/terminal/DisplayText.h"
#include "foundation/Currency.h"
#include "foundation/IcuSupport.h"
#include "foundation/NumberReading.h"
#include "payments/PaymentList.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Transaction {
  std::string day;
  std::string text;
};

/// On one line and without what ends a description: a semicolon begins a comment, two blanks end an account's name.
/// Any character that is white space to somebody becomes a blank.
std::string journalText(const std::string& text) {
  const icu::UnicodeString safe = unicodeOf(printable(text));
  icu::UnicodeString plain;
  for (std::int32_t at = 0; at < safe.length(); at = safe.moveIndex32(at, 1)) {
    const UChar32 character = safe.char32At(at);
    if (u_isUWhiteSpace(character) == 0) {
      plain.append(character == ';' ? UChar32{','} : character);
    } else if (!plain.isEmpty() && !plain.endsWith(u" ")) {
      plain.append(u' ');
    }
  }
  if (plain.endsWith(u" ")) plain.truncate(plain.length() - 1);
  return plain.isEmpty() ? "unnamed" : utf8Of(plain);
}

/// A colon would begin an account within it.
std::string accountOf(const ListedBill& bill) {
  std::string name = journalText(bill.name());
  std::replace(name.begin(), name.end(), ':', '-');
  return "expenses:bills:" + name;
}

/// The locale's currency as its code, which every hledger knows to stand behind the number.
std::string commodityOf(const Platform& platform) {
  const std::u16string code = currencyCode(platform.region);
  return code.empty() ? "" : " " + std::string(code.begin(), code.end());
}

std::string comment(const std::string& text) {
  std::istringstream lines(printableLines(text));
  std::string comments;
  for (std::string line; std::getline(lines, line);) comments += "    ; " + line + "\n";
  return comments;
}

std::string accountDirective(const Platform& platform, const ListedBill& bill) {
  const Date* due = bill.content.get<Date>(key::DueDate);
  const auto rule = QMBillsLoader{platform}.createHumanRepeatWithArray(bill.content.get<Array>(key::Repeat));
  return fmt::format("account {}\n{}", accountOf(bill),
                     comment(fmt::format("id:{}, state:{}, due:{}, repeats:{}, amount:{}", bill.bid, bill.group.word,
                                         due == nullptr ? "" : isoDay(platform, *due), rule.value_or(std::string()),
                                         plainDecimal(doubleValue(bill.content, key::Amount)))));
}

/// The code before the description keeps it from being read as a status or a code, whatever it begins with.
Transaction transactionOf(const Platform& platform, const ListedBill& bill, std::size_t number, Date date,
                          const std::string& amount, const std::string& note) {
  const std::string day = isoDay(platform, date);
  return {day,
          fmt::format("\n{} * ({}/{}) {}\n{}    {}  {}{}\n    assets:checking\n", day, journalText(bill.bid), number,
                      journalText(bill.name()), comment(note), accountOf(bill), amount, commodityOf(platform))};
}

void addPayments(const Platform& platform, const ListedBill& bill, std::vector<Transaction>& transactions,
                 std::string& leftOut) {
  const Array* payments = bill.content.get<Array>(key::PaymentList);
  for (std::size_t i = 0; payments != nullptr && i < payments->size(); ++i) {
    const Value& payment = (*payments)[i];
    const Date* date = dateOfPayment(payment);
    const Dictionary* entry = payment.get<Dictionary>();
    const std::string amount = entry == nullptr ? "" : plainDecimal(doubleValue(*entry, key::Amount));
    if (date == nullptr || amount.empty()) {
      leftOut +=
          fmt::format("; left out, without a date or an amount: payment {} of {}\n", i + 1, printable(bill.name()));
    } else {
      transactions.push_back(
          transactionOf(platform, bill, i + 1, *date, amount, entry->valueOr(key::Note, std::string())));
    }
  }
}

}  // namespace

std::string journalOf(const Platform& platform, const std::vector<ListedBill>& bills) {
  std::string accounts = "account assets:checking\n";
  std::string leftOut;
  std::vector<Transaction> transactions;
  for (const ListedBill& bill : bills) {
    accounts += accountDirective(platform, bill);
    addPayments(platform, bill, transactions, leftOut);
  }
  std::stable_sort(transactions.begin(), transactions.end(),
                   [](const Transaction& left, const Transaction& right) { return left.day < right.day; });
  std::string journal = "; Bills and payments of Tallyvane\ndecimal-mark .\ncommodity 1000.00" + commodityOf(platform) +
                        "\n\n" + accounts + leftOut;
  for (const Transaction& transaction : transactions) journal += transaction.text;
  return journal;
}

}  // namespace tallyvane::cli
