#include <filesystem>
#include <memory>
#include <set>
#include <stdexcept>

#include "cli/BillChange.h"
#include "cli/BillLookup.h"
#include "cli/BillText.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/Progress.h"
#include "cli/Table.h"
#include "cli/commands/Commands.h"
#include "common/DataFolderState.h"
#include "common/PlaceChange.h"
#include "common/PreviousVersion.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "import/QMImportManager.h"
#include "platform/PropertyListFile.h"
#include "schedule/RepeatRule.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string folder;
  bool dryRun = false;
  bool force = false;
};

/// An old file and what it becomes.
struct OldBill {
  std::string file;
  std::string name;
  std::string icon;
  std::optional<Date> due;
  std::string repeats;
  std::size_t payments = 0;
  bool active = false;
  bool readable = false;
  bool stopsImport = false;
};

/// Passes everything on and tells a person how far the import is.
class ImportProgress : public Log {
 public:
  ImportProgress(Log& log, Console& console, std::size_t count) : log_(log), progress_(console), count_(count) {}

  void line(std::string_view text) override {
    log_.line(text);
    constexpr std::string_view beginning = "Name: ";
    if (text.starts_with(beginning)) current_ = text.substr(beginning.size());
    if (!text.starts_with("Imported Bill: ")) return;
    ++imported_;
    progress_.show([&] {
      return countedSentence(count_, "{} of {} bill imported", "{} of {} bills imported", imported_, count_);
    });
  }
  void diagnostic(std::string_view text) override { log_.diagnostic(text); }
  [[nodiscard]] std::size_t imported() const { return imported_; }
  /// The name of the bill that was begun last.
  [[nodiscard]] const std::string& current() const { return current_; }

 private:
  Log& log_;
  Progress progress_;
  std::size_t count_;
  std::size_t imported_ = 0;
  std::string current_;
};

/// The old folder: the one that was named, else the one around the data folder, else the usual one.
std::string oldFolderOf(const Platform& platform, const Options& options) {
  if (!options.folder.empty()) {
    const std::string path = std::filesystem::absolute(options.folder).lexically_normal().string();
    return path.size() > 1 && path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
  }
  return programs::usualFolderOfPreviousVersion(platform);
}

void requireOldFolder(const Platform& platform, const std::string& folder) {
  const std::string data = QMBillsLoader{platform}.tallyvaneDirectory().value_or(std::string());
  if (platform.files.liesIn(folder + "/Data", data))
    couldNot(sentence("{} lies in the data folder; an old folder is beside it.", folder));
  const bool isOld = folder.ends_with("/Tallyvane") && platform.files.isFolder(folder + "/Data");
  if (!isOld)
    couldNot(sentence("{} is no folder of the previous version: that is named \"Tallyvane\" and has a folder \"Data\".",
                      folder));
}

bool hasBills(const Platform& platform, const std::string& dataFolder) {
  return platform.files.exists(dataFolder + "/" + std::string(billIndexName)) &&
         programs::billsListedIn(platform, dataFolder) != 0U;
}

/// An import for which no folder is named goes to the usual place, which is in use from then on. Bills at the user's
/// own place would be out of sight, and those at the usual one mixed with the old.
void requireNoBillsAtEitherPlace(const Platform& platform, const std::string& oldFolder) {
  if (!boolSetting(platform.defaults, key::CustomLocationEnabled)) return;
  const std::string own = QMBillsLoader{platform}.tallyvaneDirectory().value_or(std::string());
  for (const std::string& place : {own, programs::dataFolderAt(platform, {})}) {
    if (!hasBills(platform, place)) continue;
    couldNot(
        sentence("An import without a folder goes to the usual place, and there are bills in {} already. Name "
                 "the old folder to bring its bills into {}: tallyvane import {}",
                 place, own, oldFolder));
  }
}

/// The payments of such a file cannot be told apart from their notes and receipts.
bool lacksNotesOrReceipts(const Dictionary& old, std::size_t payments) {
  const auto isShort = [&](std::string_view key) {
    const Array* list = old.get<Array>(key);
    return list != nullptr && list->size() < payments;
  };
  return isShort("Pay_Notes") || isShort("Pay_Attachment");
}

OldBill oldBill(const Platform& platform, const std::string& folder, const std::string& name) {
  const QMImportManager manager{platform};
  const auto record = readPropertyListFile<Dictionary>(platform.files, platform.log, folder + "/Data/" + name);
  const Dictionary old = record.value_or(Dictionary());
  const auto text = [&](std::string_view key) { return old.valueOr(key, std::string()); };
  OldBill bill{name, manager.billNameOf(name), manager.convertIconWithIcon(text("Icon")), {}, "", 0, false, false,
               false};
  bill.readable = record.has_value();
  if (const Date* due = old.get<Date>("Next_Due")) bill.due = *due;
  if (const Array* amounts = old.get<Array>("Pay_Amounts")) bill.payments = amounts->size();
  if (const Value* count = old.find("Repeat_a")) {
    const std::int64_t unit = manager.calculateRepeatBWithString(text("Repeat_b"));
    const Array rule{*count, unit};
    bill.repeats = QMBillsLoader{platform}.createHumanRepeatWithArray(&rule).value_or(std::string());
    if (unit == UnitKind::never && bill.payments > 0) bill.due = distantFuture;
  }
  bill.active = boolValue(old, "Is_Active");
  bill.stopsImport = lacksNotesOrReceipts(old, bill.payments);
  return bill;
}

std::vector<OldBill> oldBills(const Platform& platform, const std::string& folder) {
  std::vector<OldBill> bills;
  const Result<std::vector<std::string>> names = platform.files.list(folder + "/Data");
  if (!names) couldNot(sentence("The old bills cannot be listed: {}.", names.error()));
  for (const std::string& name : *names) {
    if (!name.starts_with('.')) bills.push_back(oldBill(platform, folder, name));
  }
  return bills;
}

Cell stateOf(const OldBill& bill) {
  if (bill.stopsImport) return wordCell(marked("stops the import: fewer notes or receipts than payments"));
  if (!bill.readable) return wordCell(marked("archived; not readable"));
  return wordCell(std::string(bill.active ? activeBills.word : archivedBills.word));
}

void printPlan(Session& session, const std::vector<OldBill>& bills) {
  const QMBillsLoader loader{session.platform};
  Table table({{marked("File"), false, 12, 3},
               {marked("Bill"), false, 12},
               {marked("Due")},
               {marked("Repeats"), false, 0, 2},
               {marked("Payments"), true},
               // translators: what an old file becomes: an active bill or an archived one
               {marked("Becomes")}});
  for (const OldBill& bill : bills) {
    const Cell due =
        bill.due ? Cell(loader.createDueDateStringWithDate(*bill.due), isoDay(session.platform, *bill.due)) : Cell("");
    table.add({bill.file, bill.name, due, bill.repeats, std::to_string(bill.payments), stateOf(bill)});
  }
  table.print(session.console);
}

Json planJson(const Platform& platform, const std::vector<OldBill>& bills) {
  Json list = Json::array();
  for (const OldBill& bill : bills) {
    list.push_back({{"file", bill.file},
                    {"name", bill.name},
                    {"icon", bill.icon},
                    {"dueDate", bill.due ? Json(isoDay(platform, *bill.due)) : Json(nullptr)},
                    {"repeats", bill.repeats},
                    {"payments", bill.payments},
                    {"state", bill.active ? "active" : "archived"},
                    {"readable", bill.readable},
                    {"stopsImport", bill.stopsImport}});
  }
  return list;
}

/// Importing the same folder again would make every bill twice.
void requireNewNames(const Platform& platform, const std::vector<OldBill>& bills) {
  std::set<std::string> present;
  for (const ListedBill& bill : allBills(platform)) present.insert(bill.name());
  std::size_t count = 0;
  std::string first;
  for (const OldBill& bill : bills) {
    if (!present.contains(bill.name)) continue;
    if (count++ == 0) first = bill.name;
  }
  if (count == 0) return;
  couldNot(countedSentence(
      count, "{} of these bills, \"{}\", is here already. Add --force to import all of them again.",
      "{} of these bills, such as \"{}\", are here already. Add --force to import all of them again.", count, first));
}

/// By the model's operation that fits the place: two of them also put the data folder back to its default place.
void runImport(const Platform& platform, const Options& options, const std::string& folder) {
  QMImportManager manager{platform};
  const std::string usual = platform.files.applicationSupportFolder() + "/Tallyvane";
  if (!options.folder.empty()) {
    (void)manager.importDataFromPreviousVersionAtPath(folder);
  } else if (folder == usual) {
    manager.importDataInDefaultLocation();
  } else {
    manager.importDataFromPreviousVersion();
  }
}

void putBack(Session& session, std::string_view key, const std::optional<Value>& value) {
  UserDefaults& defaults = session.platform.defaults;
  if (const Result<> put = value ? defaults.set(key, *value) : defaults.remove(key); !put)
    session.console.error(sentence("The setting {} could not be put back: {}.", key, put.error()));
}

/// What came in before an error stays. How many bills that were.
std::size_t importAll(Session& session, const Options& options, const std::string& folder, std::size_t count) {
  UserDefaults& defaults = session.platform.defaults;
  const auto enabled = defaults.object(key::CustomLocationEnabled);
  const auto cached = defaults.object(key::CustomLocationTempPath);
  const auto restoreLocation = [&] {
    putBack(session, key::CustomLocationEnabled, enabled);
    putBack(session, key::CustomLocationTempPath, cached);
  };
  const std::vector<std::string> mirrored = session.platform.cloud.keys();
  ImportProgress progress(session.platform.log, session.console, count);
  std::string failure;
  session.write(
      [&] {
        const Platform platform = session.platform.loggingTo(progress);
        try {
          runImport(platform, options, folder);
        } catch (const std::exception& error) {
          failure = error.what();
        }
      },
      [&] {
        restoreLocation();
        withdrawFromMirror(session.platform, mirrored);
      });
  if (progress.imported() == 0) restoreLocation();
  if (!failure.empty())
    couldNot(countedSentence(progress.imported(), "The import ended at \"{}\" after {} bill, which stays: {}.",
                             "The import ended at \"{}\" after {} bills, which stay: {}.", progress.current(),
                             progress.imported(), failure));
  return progress.imported();
}

void importBills(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  requireReadableData(platform);
  const std::string folder = oldFolderOf(platform, options);
  requireOldFolder(platform, folder);
  if (options.folder.empty()) requireNoBillsAtEitherPlace(platform, folder);
  const std::vector<OldBill> bills = oldBills(platform, folder);
  if (options.dryRun) {
    if (session.json)
      return printJson(session.console, {{"folder", folder}, {"dryRun", true}, {"bills", planJson(platform, bills)}});
    return printPlan(session, bills);
  }
  if (!options.force) requireNewNames(platform, bills);
  const auto dataFolder = [&] { return QMBillsLoader{platform}.tallyvaneDirectory().value_or(std::string()); };
  const std::string before = dataFolder();
  const std::size_t imported = importAll(session, options, folder, bills.size());
  const std::string after = dataFolder();
  if (session.json)
    return printJson(session.console, {{"folder", folder}, {"imported", imported}, {"dataFolder", after}});
  session.console.line(countedSentence(imported, "Imported {} bill. The old files stay where they are.",
                                       "Imported {} bills. The old files stay where they are.", imported));
  if (after != before) session.console.line(printable(sentence("The data folder is now {}.", after)));
}

}  // namespace

void addImport(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation,
      {"import", marked("Bring in the bills of the previous version"), "tallyvane import ~/Backup/Tallyvane --dry-run"},
      [options](Session& session) { importBills(session, *options); });
  command->add_option("FOLDER", options->folder,
                      "The old folder \"Tallyvane\"; looked for where it usually is if not given");
  command->add_flag("--dry-run", options->dryRun, "Only list what each old file becomes");
  command->add_flag("--force", options->force, "Also when bills of these names are here already");
}

}  // namespace tallyvane::cli
