#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "common/DailyBackup.h"
#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "storage/NewestBackup.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

using programs::BackupOutcome;

/// The newest backup; a part that is not there cannot be told.
struct Newest {
  std::optional<Date> day;
  std::optional<std::string> folder;
  std::optional<std::size_t> bills;
  std::optional<std::uint64_t> bytes;
};

Newest newest(const Platform& platform) {
  Newest backup{settingOf<Date>(platform.defaults, key::LastBackup), newestBackup(platform), {}, {}};
  if (!backup.folder || !platform.files.isFolder(*backup.folder)) return backup;
  backup.bills = programs::billsListedIn(platform, *backup.folder);
  if (const Result<std::uint64_t> size = platform.files.copySize(*backup.folder)) backup.bytes = *size;
  return backup;
}

template <typename T>
Json orNull(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

void printStatus(Session& session) {
  const Platform& platform = session.platform;
  const Newest backup = newest(platform);
  Console& console = session.console;
  if (session.json) {
    return printJson(console, {{"day", backup.day ? Json(isoDay(platform, *backup.day)) : Json(nullptr)},
                               {"folder", orNull(backup.folder)},
                               {"bills", orNull(backup.bills)},
                               {"bytes", orNull(backup.bytes)},
                               {"complete", backup.bills.has_value()}});
  }
  if (!backup.day) return console.line(translated("No backup has been made yet."));
  console.line(sentence("Last backup: {}", QMBillsLoader{platform}.lastBackedUpNaturalDate()));
  // translators: the folder of the backup
  console.line(sentence("Place: {}", printable(backup.folder.value_or(translated("none")))));
  if (!backup.bills)
    return console.line(translated("It is not there, or not complete. The next one is made tomorrow."));
  console.line(sentence("Bills: {}", *backup.bills));
  console.line(sentence("Size: {}", programs::sizeText(backup.bytes.value_or(0))));
}

void makeBackup(Session& session) {
  const Platform& platform = session.platform;
  requireReadableData(platform);
  std::optional<Result<BackupOutcome>> outcome;
  session.write([&] { outcome = programs::backUpToday(platform); });
  if (!*outcome) couldNot(translated("No backup was made.") + " " + outcome->error());
  if (session.json) return printStatus(session);
  const Newest backup = newest(platform);
  if (**outcome == BackupOutcome::made)
    return session.console.line(countedSentence(backup.bills.value_or(0), "Backed up {} bill.", "Backed up {} bills.",
                                                backup.bills.value_or(0)));
  if (!backup.bills)
    couldNot(translated("Today's backup is not there, or not complete. The next one is made tomorrow."));
  session.console.line(countedSentence(*backup.bills, "Today's backup was made already; it has {} bill.",
                                       "Today's backup was made already; it has {} bills.", *backup.bills));
}

}  // namespace

void addBackup(CLI::App& app, Invocation& invocation) {
  auto showsStatus = std::make_shared<bool>(false);
  CLI::App* command = addCommand(
      app, invocation, {"backup", marked("Make today's backup, unless there is one"), "tallyvane backup --status"},
      [showsStatus](Session& session) { *showsStatus ? printStatus(session) : makeBackup(session); });
  command->add_flag("--status", *showsStatus, "Show the newest backup: its day, place, number of bills and size");
}

}  // namespace tallyvane::cli
