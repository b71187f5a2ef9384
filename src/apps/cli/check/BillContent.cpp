#include "cli/check/BillContent.h"

#include <fmt/format.h>

#include "cli/Receipt.h"
#include "cli/check/Shapes.h"
#include "schedule/RepeatRule.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

/// Twice per month and never go without a count; every other rule needs one that moves the due date on.
std::string_view wrongInRule(const Array& repeat) {
  if (repeat.size() != 2 || !repeat[0].is<std::int64_t>() || !repeat[1].is<std::int64_t>())
    return "is not made of two whole numbers";
  const std::int64_t unit = integerValue(&repeat[1]);
  if (unit < UnitKind::weeks || unit > UnitKind::never) return "has a unit that there is not";
  const bool needsCount = unit != UnitKind::twicePerMonth && unit != UnitKind::never;
  if (needsCount && integerValue(&repeat[0]) < 1) return "never moves the due date on";
  return "";
}

void addRuleProblem(const Dictionary& bill, Problems& problems) {
  const Array* repeat = bill.get<Array>(key::Repeat);
  const std::string wrong =
      repeat == nullptr ? oddness(bill.find(key::Repeat), Shape::list) : std::string(wrongInRule(*repeat));
  if (wrong.empty()) return;
  problems.push_back({FindingKind::invalidRepeat, std::string(key::Repeat), "the repeat rule \"Repeat\" " + wrong});
}

void addPaymentProblems(const Array& payments, Problems& problems) {
  for (std::size_t i = 0; i < payments.size(); ++i) {
    const Dictionary* payment = payments[i].get<Dictionary>();
    const std::string where = fmt::format("payment {}: ", i + 1);
    if (payment == nullptr) {
      problems.push_back({FindingKind::oddPayment, std::string(key::PaymentList), where + "is no payment"});
      continue;
    }
    addOddKeys(
        *payment,
        {{key::Amount, Shape::number}, {key::Date, Shape::date}, {key::Note, Shape::text}, {key::Receipt, Shape::text}},
        FindingKind::oddPayment, where, problems);
  }
}

/// Weekly and two-weekly sources have their dates, others a day of the month.
void addSourceProblems(const Dictionary& source, const std::string& where, Problems& problems) {
  constexpr std::int64_t lastDay = 28;
  addOddKeys(source, {{key::Amount, Shape::number}, {key::Repeat, Shape::number}}, FindingKind::oddKey, where,
             problems);
  const std::int64_t code = integerValue(source, key::Repeat);
  const auto tell = [&](std::string_view key, std::string_view wrong) {
    problems.push_back({FindingKind::oddKey, std::string(key), fmt::format("{}\"{}\" {}", where, key, wrong)});
  };
  if (code < 0 || code > 3) return tell(key::Repeat, "stands for no interval");
  if (code >= 2) {
    addOddKeys(source, {{key::IncomeDates, Shape::list}}, FindingKind::oddKey, where, problems);
    const Array dates = source.valueOr(key::IncomeDates, Array());
    for (const Value& date : dates) {
      if (!date.is<Date>()) return tell(key::IncomeDates, "has entries that are no dates");
    }
    return;
  }
  addOddKeys(source, {{key::PayDate, Shape::number}}, FindingKind::oddKey, where, problems);
  const std::int64_t day = integerValue(source, key::PayDate);
  if (day < 0 || day > lastDay) tell(key::PayDate, "is not from 0 to 28");
  if (code == 0) addOddKeys(source, {{key::CreationDate, Shape::date}}, FindingKind::oddKey, where, problems);
}

}  // namespace

Problems problemsOfBill(const Dictionary& bill) {
  Problems problems;
  const std::string wrongDueDate = oddness(bill.find(key::DueDate), Shape::date);
  if (!wrongDueDate.empty())
    problems.push_back({FindingKind::noDueDate, std::string(key::DueDate), "the due date \"DueDate\" " + wrongDueDate});
  addRuleProblem(bill, problems);
  addOddKeys(bill,
             {{key::Name, Shape::text},
              {key::Bid, Shape::text},
              {key::Icon, Shape::text},
              {key::Average, Shape::number},
              {key::LastPayment, Shape::date},
              {key::TotalPaid, Shape::number},
              {key::RemindMe, Shape::yesNo},
              {key::PaySite, Shape::text},
              {key::PaymentList, Shape::list},
              {key::ReminderDays, Shape::number},
              {key::Balance, Shape::number},
              {key::Interest, Shape::number},
              {key::Notes, Shape::text},
              {key::Tags, Shape::texts},
              {key::Amount, Shape::number},
              {key::PayType, Shape::number},
              {key::Rev, Shape::number}},
             FindingKind::oddKey, "", problems);
  if (const Array* payments = bill.get<Array>(key::PaymentList)) addPaymentProblems(*payments, problems);
  return problems;
}

Problems missingReceipts(const Platform& platform, const Dictionary& bill) {
  Problems problems;
  const Array* payments = bill.get<Array>(key::PaymentList);
  for (std::size_t i = 0; payments != nullptr && i < payments->size(); ++i) {
    const Dictionary* payment = (*payments)[i].get<Dictionary>();
    const Receipt receipt = payment == nullptr ? Receipt() : receiptOf(platform, *payment);
    if (!receipt.isMissing) continue;
    problems.push_back({FindingKind::receiptGone, std::string(key::Receipt),
                        fmt::format("payment {}: its receipt is gone: {}", i + 1, receipt.path)});
  }
  return problems;
}

Problems problemsOfTags(const Array& tags) {
  const Value list(tags);
  const std::string odd = oddness(&list, Shape::texts);
  if (odd.empty()) return {};
  return {{FindingKind::oddEntry, "", "the list of tags " + odd}};
}

Problems problemsOfIncome(const Dictionary& income) {
  Problems problems;
  addOddKeys(income, {{key::IncomeSources, Shape::list}}, FindingKind::oddKey, "", problems);
  const Array sources = income.valueOr(key::IncomeSources, Array());
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const std::string where = fmt::format("source {}: ", i + 1);
    if (const Dictionary* source = sources[i].get<Dictionary>()) {
      addSourceProblems(*source, where, problems);
    } else {
      problems.push_back({FindingKind::oddEntry, std::string(key::IncomeSources), where + "is no source of income"});
    }
  }
  return problems;
}

Problems problemsOfMails(const Dictionary& queue) {
  Problems problems;
  addOddKeys(queue, {{key::PendingMessages, Shape::texts}}, FindingKind::oddKey, "", problems);
  for (const std::string& title : stringsOf(queue.get<Array>(key::PendingMessages))) {
    const Dictionary* message = queue.get<Dictionary>(title);
    const std::string where = fmt::format("the message \"{}\": ", title);
    if (message == nullptr) {
      problems.push_back({FindingKind::oddEntry, title, where + "waits, but there is none"});
      continue;
    }
    addOddKeys(*message,
               {{key::mailSubject, Shape::text},
                {key::mailBody, Shape::text},
                {key::mailDueDate, Shape::date},
                {key::mailAlarmDate, Shape::date},
                {key::mailBillTitle, Shape::text}},
               FindingKind::oddKey, where, problems);
  }
  return problems;
}

}  // namespace tallyvane::cli
