#include "cli/check/Repair.h"

#include <fmt/format.h>

#include <optional>

#include "cli/Failure.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/check/IndexLists.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

std::string questionAbout(const Platform& platform, const UnlistedBill& bill) {
  const Date* due = bill.content.get<Date>(key::DueDate);
  const Array* payments = bill.content.get<Array>(key::PaymentList);
  const std::size_t count = payments == nullptr ? 0 : payments->size();
  return countedSentence(
      // translators: a bill; a date, or "never"; payments. The letters a, r and d are what is typed, and stay.
      count, "\"{}\" is in no list (due {}, {} payment). Which one? a active, r archived, d deleted, Enter none:",
      "\"{}\" is in no list (due {}, {} payments). Which one? a active, r archived, d deleted, Enter none:",
      bill.content.valueOr(key::Name, bill.bid), due == nullptr ? translated("never") : isoDay(platform, *due), count);
}

/// Nobody but the person says where a bill belongs: it may have been taken off its list on purpose.
std::vector<Choice> askWhere(Session& session, const std::vector<UnlistedBill>& bills) {
  std::vector<Choice> choices;
  if (bills.empty()) return choices;
  if (!session.console.canAsk()) {
    session.console.error(countedSentence(
        bills.size(), "{} bill is in no list: nobody can be asked here, so nothing was changed about that.",
        "{} bills are in no list: nobody can be asked here, so nothing was changed about that.", bills.size()));
    return choices;
  }
  for (const UnlistedBill& bill : bills) {
    const std::optional<std::string> answer = session.console.answer(questionAbout(session.platform, bill));
    if (!answer) break;
    const std::string name = bill.content.valueOr(key::Name, std::string());
    if (*answer == "a") choices.push_back({bill.bid, name, activeBills});
    if (*answer == "r") choices.push_back({bill.bid, name, archivedBills});
    if (*answer == "d") choices.push_back({bill.bid, name, deletedBills});
  }
  return choices;
}

/// A copy beside the backups, which no backup replaces.
std::string copiedAside(const Platform& platform, const std::string& folder) {
  const std::string first =
      QMBillsLoader{platform}.tallyvaneBackupPath() + "/before-repair-" + isoDay(platform, platform.clock.now());
  std::string copy = first;
  for (int number = 2; platform.files.exists(copy); ++number) copy = fmt::format("{}-{}", first, number);
  if (const Result<> copied = platform.files.copy(folder, copy); !copied)
    couldNot(sentence("Nothing was repaired, because the data folder could not be copied first: {}.", copied.error()));
  return copy;
}

/// Under the lock: what has found its place meanwhile is left there. `repair` says what has been done so far.
void makeRepair(const Platform& platform, const std::string& folder, const std::vector<Choice>& choices,
                Repair& repair) {
  requireReadableData(platform);
  const std::string path = folder + "/" + std::string(billIndexName);
  Dictionary index = readPropertyListFile<Dictionary>(platform.files, platform.log, path).value_or(Dictionary());
  repair.doubles = removeDoubles(index);
  const auto places = placesIn(index);
  for (const Choice& choice : choices) {
    if (places.contains(choice.bid)) continue;
    enter(index, choice.list.key, choice.bid);
    repair.listed.push_back(choice);
  }
  if (repair.doubles == 0 && repair.listed.empty()) return;
  repair.copy = copiedAside(platform, folder);
  QMBill{platform}.overWriteIndexFileWithDictionaryUpdatingKey(index, "");
  mirrorLists(platform);
}

/// After a repair that failed its copy goes, unless the index could not be put back and the copy has the good one.
void removeNeedlessCopy(FileStore& files, const std::string& folder, const std::string& copy) {
  const std::string index = "/" + std::string(billIndexName);
  const Result<std::string> now = files.read(folder + index);
  const Result<std::string> before = files.read(copy + index);
  if (now && before && *now == *before) (void)files.remove(copy);
}

void agree(const Platform& platform, const std::vector<Choice>& choices) {
  for (const Choice& choice : choices) agreeWithFiles(platform, choice.bid, {choice.name});
}

}  // namespace

Repair repair(Session& session, const std::string& folder, const CheckReport& report) {
  const std::vector<Choice> choices = askWhere(session, report.unlisted);
  Repair done;
  session.write(
      [&] {
        makeRepair(session.platform, folder, choices, done);
        agree(session.platform, done.listed);
      },
      [&] {
        if (!done.copy.empty()) removeNeedlessCopy(session.platform.files, folder, done.copy);
        agree(session.platform, choices);
      });
  return done;
}

}  // namespace tallyvane::cli
