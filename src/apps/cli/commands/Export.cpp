#include <memory>
#include <optional>

#include "cli/Failure.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/export/Exports.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

struct Options {
  bool csv = false;
  bool ics = false;
  bool hledger = false;
  std::optional<std::string> output;
};

std::string exported(const Session& session, const Options& options) {
  const std::vector<ListedBill> bills = allBills(session.platform);
  if (session.json) return jsonOf(session.platform, bills);
  if (options.csv) return csvOf(session.platform, bills);
  if (options.hledger) return journalOf(session.platform, bills);
  Result<std::string> calendar = calendarOf(session.platform, bills);
  if (!calendar) couldNot(sentence("There is nothing to export: {}.", calendar.error()));
  return *calendar;
}

/// The file is its owner's alone. One in the data folder could be taken for a file of Tallyvane's.
void writeTo(Session& session, const std::string& named, const std::string& text) {
  const std::string path = absolutePath(named);
  if (path.empty()) wrongUsage(sentence("\"{}\" is no name for a file.", named));
  if (session.platform.files.isFolder(path)) couldNot(sentence("{} is a folder; name a file in it.", path));
  if (session.platform.files.liesIn(path, requireDataFolder(session.platform)))
    couldNot(sentence("{} lies in the data folder; choose another one.", path));
  if (const Result<> saved = session.platform.files.save(path, text); !saved)
    couldNot(sentence("The export was not written: {}.", saved.error()));
}

void exportBills(Session& session, const Options& options) {
  const int forms = int{session.json} + int{options.csv} + int{options.ics} + int{options.hledger};
  if (forms != 1)
    wrongUsage(translated("Say one of --json, --csv, --ics and --hledger.") + " " +
               sentence("See: {}", "tallyvane export --help"));
  const std::string text = exported(session, options);
  if (options.output) return writeTo(session, *options.output, text);
  session.console.text(session.console.interactive() ? printableLines(text) : text);
}

}  // namespace

void addExport(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"export", marked("Write bills and payments for other programs"),
                                  "tallyvane export --hledger --output bills.journal"},
                                 [options](Session& session) { exportBills(session, *options); });
  command->add_flag("--csv", options->csv, "A table for spreadsheets: a row for each bill and each payment");
  command->add_flag("--ics", options->ics, "A calendar with the due dates of the active bills");
  command->add_flag("--hledger", options->hledger, "A journal of the payments for hledger");
  command->add_option("--output", options->output, "The file to write; standard output if not given")
      ->type_name("FILE");
}

}  // namespace tallyvane::cli
