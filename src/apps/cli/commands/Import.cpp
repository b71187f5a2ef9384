#include <memory>
#include <optional>
#include <set>
#include <stdexcept>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/import/OldBills.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Progress.h"
#include "common/DataFolderState.h"
#include "common/PlaceChange.h"
#include "common/PreviousVersion.h"
#include "common/Sentences.h"
#include "foundation/Paths.h"
#include "import/QMImportManager.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::optional<std::string> folder;
  bool dryRun = false;
  bool force = false;
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
  if (!options.folder) return programs::usualFolderOfPreviousVersion(platform);
  const std::string path = absolutePath(*options.folder);
  if (path.empty()) wrongUsage(translated("The name must not be empty."));
  return withoutTrailingSlashes(path);
}

void requireOldFolder(const Platform& platform, const std::string& folder) {
  const std::string data = dataFolder(platform);
  if (platform.files.liesIn(folder + "/Data", data))
    couldNot(sentence("{} lies in the data folder; an old folder is beside it.", folder));
  const bool isOld = folder.ends_with("/Tallyvane") && platform.files.isFolder(folder + "/Data");
  if (!isOld)
    couldNot(sentence("{} is no folder of the previous version: that is named \"Tallyvane\" and has a folder \"Data\".",
                      folder));
}

bool hasBills(const Platform& platform, const std::string& folder) {
  return platform.files.exists(folder + "/" + std::string(billIndexName)) &&
         programs::billsListedIn(platform, folder) != 0U;
}

/// An import for which no folder is named goes to the usual place, which is in use from then on. Bills at the user's
/// own place would be out of sight, and those at the usual one mixed with the old.
void requireNoBillsAtEitherPlace(const Platform& platform, const std::string& oldFolder) {
  if (!boolSetting(platform.defaults, key::CustomLocationEnabled)) return;
  const std::string own = dataFolder(platform);
  for (const std::string& place : {own, programs::dataFolderAt(platform, {})}) {
    if (!hasBills(platform, place)) continue;
    couldNot(
        sentence("An import without a folder goes to the usual place, and there are bills in {} already. Name "
                 "the old folder to bring its bills into {}: tallyvane import {}",
                 place, own, oldFolder));
  }
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
  if (options.folder) {
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
  if (!options.folder) requireNoBillsAtEitherPlace(platform, folder);
  const std::vector<OldBill> bills = oldBills(platform, folder);
  if (options.dryRun) {
    if (session.json)
      return printJson(session.console, {{"folder", folder}, {"dryRun", true}, {"bills", jsonOf(platform, bills)}});
    return tableOf(platform, bills).print(session.console);
  }
  if (!options.force) requireNewNames(platform, bills);
  const std::string before = dataFolder(platform);
  const std::size_t imported = importAll(session, options, folder, bills.size());
  const std::string after = dataFolder(platform);
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
