#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "common/BackupRestore.h"
#include "common/DataFolderState.h"
#include "common/PlaceChange.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "reminders/QMReminderManager.h"
#include "storage/NewestBackup.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options {
  bool confirmed = false;
  bool undo = false;
};

/// The active bills that remind, of a data folder that may be damaged.
std::vector<Dictionary> remindingBills(const Platform& platform) {
  QMBillsLoader loader{platform};
  std::vector<Dictionary> bills;
  for (const std::string& bid : loader.getListOfBills(key::ActiveBills).value_or(std::vector<std::string>())) {
    std::optional<Dictionary> bill = loader.loadBillWithID(bid);
    if (bill && boolValue(*bill, key::RemindMe)) bills.push_back(std::move(*bill));
  }
  return bills;
}

/// Reminders and mirror tell of the bills that are there now, and no more of those that were.
void agreeWithAllFiles(const Platform& platform, const std::vector<Dictionary>& before) {
  for (const Dictionary& bill : before) {
    removeReminders(platform, bill.valueOr(key::Bid, std::string()), bill.valueOr(key::Name, std::string()));
  }
  for (const Dictionary& bill : remindingBills(platform)) {
    removeReminders(platform, bill.valueOr(key::Bid, std::string()), bill.valueOr(key::Name, std::string()));
    QMReminderManager{platform}.createTallyvaneReminderForBill(bill);
  }
  for (const ListedBill& bill : allBills(platform)) {
    QMBill{platform}.uploadBillToiCloudWithBidAndDictionary(bill.bid, bill.content);
  }
  mirrorLists(platform);
  agreeTagsWithFiles(platform);
}

/// Runs what replaces the data folder. A failure is told after the operation has ended: nothing of it is to be put
/// back, since it has done so itself.
void replaceData(Session& session, Result<> (*replace)(const Platform&)) {
  const Platform& platform = session.platform;
  Result<> outcome;
  session.write([&] {
    const std::vector<Dictionary> before = remindingBills(platform);
    outcome = replace(platform);
    if (outcome) agreeWithAllFiles(platform, before);
  });
  if (outcome) return;
  const auto unfinished = programs::unfinishedChange(platform);
  couldNot(sentence("Not done: {}.", outcome.error()) + " " +
           (unfinished ? *unfinished : translated("Your bills are as they were.")));
}

void requireSettledPlace(const Platform& platform) {
  if (programs::begunPlaceChange(platform)) couldNot(programs::unfinishedChange(platform).value_or(std::string()));
}

void requireConsent(Session& session, bool confirmed, const std::string& day, std::size_t bills) {
  if (confirmed) return;
  if (!session.console.canAsk())
    wrongUsage(countedSentence(bills, "Nobody can be asked here; add --yes to restore the backup of {} with {} bill.",
                               "Nobody can be asked here; add --yes to restore the backup of {} with {} bills.", day,
                               bills));
  const std::string question = countedSentence(
      bills, "Replace your bills by the backup of {} with {} bill? What has changed since then is lost.",
      "Replace your bills by the backup of {} with {} bills? What has changed since then is lost.", day, bills);
  if (!session.console.confirms(question)) couldNot(translated("Nothing was changed."));
}

void restoreBackup(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  requireSettledPlace(platform);
  if (options.undo) {
    replaceData(session, programs::putReplacedFolderBack);
    if (session.json) return printJson(session.console, {{"undone", true}});
    return session.console.line(translated("Your bills from before the restore are back."));
  }
  const std::optional<std::string> backup = newestBackup(platform);
  const auto bills = backup ? programs::billsListedIn(platform, *backup) : std::nullopt;
  if (!bills) couldNot(translated("There is no complete backup to restore."));
  const std::string day = QMBillsLoader{platform}.lastBackedUpNaturalDate();
  requireConsent(session, options.confirmed, day, *bills);
  replaceData(session, programs::restoreNewestBackup);
  if (session.json) return printJson(session.console, {{"restored", true}, {"bills", *bills}});
  session.console.line(countedSentence(*bills, "Restored the backup of {} with {} bill.",
                                       "Restored the backup of {} with {} bills.", day, *bills));
}

}  // namespace

void addRestoreBackup(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation,
      {"restore-backup", marked("Replace all bills by the newest backup; asks first"), "tallyvane restore-backup"},
      [options](Session& session) { restoreBackup(session, *options); });
  CLI::Option* yes = command->add_flag("--yes", options->confirmed, "Do not ask");
  command->add_flag("--undo", options->undo, "After a restore that was interrupted: bring back the bills from before")
      ->excludes(yes);
}

}  // namespace tallyvane::cli
