#include "cli/check/BillContent.h"

#include "cli/bills/Receipt.h"
#include "cli/check/Shapes.h"
#include "common/Sentences.h"
#include "schedule/RepeatRule.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

/// Twice per month and never go without a count; every other rule needs one that moves the due date on.
std::string wrongInRule(const Array& repeat) {
  if (repeat.size() != 2 || !repeat[0].is<std::int64_t>() || !repeat[1].is<std::int64_t>())
    return translated("the repeat rule \"Repeat\" is not made of two whole numbers");
  const std::int64_t unit = integerValue(&repeat[1]);
  if (unit < UnitKind::weeks || unit > UnitKind::never)
    return translated("the repeat rule \"Repeat\" has a unit that there is not");
  const bool needsCount = unit != UnitKind::twicePerMonth && unit != UnitKind::never;
  if (needsCount && integerValue(&repeat[0]) < 1)
    return translated("the repeat rule \"Repeat\" never moves the due date on");
  return "";
}

void addRuleProblem(const Dictionary& bill, Problems& problems) {
  const Array* repeat = bill.get<Array>(key::Repeat);
  // translators: stands before "is missing" and the like
  const std::string named = translated("the repeat rule \"Repeat\"");
  const std::string wrong =
      repeat == nullptr ? oddness(named, bill.find(key::Repeat), Shape::list) : wrongInRule(*repeat);
  if (wrong.empty()) return;
  problems.push_back({FindingKind::invalidRepeat, std::string(key::Repeat), wrong});
}

void addPaymentProblems(const Array& payments, Problems& problems) {
  for (std::size_t i = 0; i < payments.size(); ++i) {
    const Dictionary* payment = payments[i].get<Dictionary>();
    // translators: the payment's number; what is wrong with it stands behind
    const std::string where = sentence("payment {}: ", i + 1);
    if (payment == nullptr) {
      problems.push_back({FindingKind::oddPayment, std::string(key::PaymentList), where + translated("is no payment")});
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
  const auto tell = [&](std::string_view key, const std::string& wrong) {
    problems.push_back({FindingKind::oddKey, std::string(key), where + wrong});
  };
  if (code < 0 || code > 3) return tell(key::Repeat, sentence("\"{}\" stands for no interval", key::Repeat));
  if (code >= 2) {
    addOddKeys(source, {{key::IncomeDates, Shape::list}}, FindingKind::oddKey, where, problems);
    const Array dates = source.valueOr(key::IncomeDates, Array());
    for (const Value& date : dates) {
      if (!date.is<Date>())
        return tell(key::IncomeDates, sentence("\"{}\" has entries that are no dates", key::IncomeDates));
    }
    return;
  }
  addOddKeys(source, {{key::PayDate, Shape::number}}, FindingKind::oddKey, where, problems);
  const std::int64_t day = integerValue(source, key::PayDate);
  if (day < 0 || day > lastDay) tell(key::PayDate, sentence("\"{}\" is not from 0 to 28", key::PayDate));
  if (code == 0) addOddKeys(source, {{key::CreationDate, Shape::date}}, FindingKind::oddKey, where, problems);
}

}  // namespace

Problems problemsOfBill(const Dictionary& bill) {
  Problems problems;
  // translators: stands before "is missing" and the like
  const std::string named = translated("the due date \"DueDate\"");
  const std::string wrongDueDate = oddness(named, bill.find(key::DueDate), Shape::date);
  if (!wrongDueDate.empty()) problems.push_back({FindingKind::noDueDate, std::string(key::DueDate), wrongDueDate});
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
                        sentence("payment {}: its receipt is gone: {}", i + 1, receipt.path)});
  }
  return problems;
}

Problems problemsOfTags(const Array& tags) {
  const Value list(tags);
  // translators: stands before "has entries that are no texts"
  const std::string odd = oddness(translated("the list of tags"), &list, Shape::texts);
  if (odd.empty()) return {};
  return {{FindingKind::oddEntry, "", odd}};
}

Problems problemsOfIncome(const Dictionary& income) {
  Problems problems;
  addOddKeys(income, {{key::IncomeSources, Shape::list}}, FindingKind::oddKey, "", problems);
  const Array sources = income.valueOr(key::IncomeSources, Array());
  for (std::size_t i = 0; i < sources.size(); ++i) {
    // translators: the number of a source of income; what is wrong with it stands behind
    const std::string where = sentence("source {}: ", i + 1);
    if (const Dictionary* source = sources[i].get<Dictionary>()) {
      addSourceProblems(*source, where, problems);
    } else {
      problems.push_back(
          {FindingKind::oddEntry, std::string(key::IncomeSources), where + translated("is no source of income")});
    }
  }
  return problems;
}

Problems problemsOfMails(const Dictionary& queue) {
  Problems problems;
  addOddKeys(queue, {{key::PendingMessages, Shape::texts}}, FindingKind::oddKey, "", problems);
  for (const std::string& title : stringsOf(queue.get<Array>(key::PendingMessages))) {
    const Dictionary* message = queue.get<Dictionary>(title);
    // translators: what is wrong with the message stands behind
    const std::string where = sentence("the message \"{}\": ", title);
    if (message == nullptr) {
      problems.push_back({FindingKind::oddEntry, title, where + translated("waits, but there is none")});
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
