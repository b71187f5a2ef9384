#include <fmt/format.h>

#include <memory>
#include <optional>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/check/Repair.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Progress.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

/// A large folder takes a while, and the person is told how far it is.
CheckReport checked(Session& session, const std::string& folder) {
  Progress progress(session.console);
  return checkDataFolder(session.platform, folder, [&](std::size_t done, std::size_t all) {
    progress.show([&] { return countedSentence(all, "{} of {} file read", "{} of {} files read", done, all); });
  });
}

void printFindings(Console& console, const CheckReport& report) {
  Table table({{marked("Bill"), false, 8}, {marked("Problem"), false, 30}, {marked("File"), false, 12, 1}});
  for (const Finding& finding : report.findings) table.add({finding.bill, finding.problem.text, finding.file});
  if (!report.findings.empty()) table.print(console);
}

Json findingsJson(const CheckReport& report) {
  Json list = Json::array();
  for (const auto& [problem, file, bill] : report.findings) {
    list.push_back({{"kind", wordOf(problem.kind)},
                    {"file", file},
                    {"bill", bill},
                    {"key", problem.key},
                    {"problem", problem.text}});
  }
  return list;
}

Json repairJson(const Repair& repair) {
  Json listed = Json::array();
  for (const Choice& choice : repair.listed)
    listed.push_back({{"id", choice.bid}, {"name", choice.name}, {"state", choice.list.word}});
  return {{"copy", repair.copy}, {"removedDoubles", repair.doubles}, {"listed", std::move(listed)}};
}

std::string stateNow(const Choice& choice) {
  if (choice.list.key == key::ActiveBills) return sentence("\"{}\" is active now.", choice.name);
  if (choice.list.key == key::ArchivedBills) return sentence("\"{}\" is archived now.", choice.name);
  return sentence("\"{}\" is deleted now.", choice.name);
}

void printRepair(Console& console, const Repair& repair) {
  if (repair.copy.empty()) return console.line(translated("There was nothing to repair."));
  if (repair.doubles > 0)
    console.line(countedSentence(repair.doubles, "Took {} double entry off the lists.",
                                 "Took {} double entries off the lists.", repair.doubles));
  for (const Choice& choice : repair.listed) console.line(printable(stateNow(choice)));
  console.line(printable(sentence("The data folder as it was before: {}", repair.copy)));
}

void printAll(Session& session, const std::string& folder, const CheckReport& report,
              const std::optional<Repair>& repair, std::size_t left) {
  if (session.json) {
    Json json{{"folder", folder}, {"files", report.files}, {"findings", findingsJson(report)}};
    if (repair) json["repair"] = repairJson(*repair);
    if (repair) json["left"] = left;
    return printJson(session.console, json);
  }
  if (repair) return printRepair(session.console, *repair);
  if (report.findings.empty() && session.console.interactive())
    session.console.line(
        countedSentence(report.files, "{} file read, nothing found.", "{} files read, nothing found.", report.files));
}

std::string countOfProblems(std::size_t left, std::size_t read, bool repairs) {
  // translators: stands in "{} problems found in {}." and "{} problems left in {}."
  const std::string files = countedSentence(read, "{} file", "{} files", read);
  return repairs ? countedSentence(left, "{} problem left in {}.", "{} problems left in {}.", left, files)
                 : countedSentence(left, "{} problem found in {}.", "{} problems found in {}.", left, files);
}

void check(Session& session, bool repairs) {
  const std::string folder = requireDataFolder(session.platform);
  const CheckReport report = checked(session, folder);
  if (!session.json) printFindings(session.console, report);
  std::optional<Repair> done;
  std::size_t left = report.findings.size();
  if (repairs) {
    done = repair(session, folder, report);
    left = checkDataFolder(session.platform, folder, [](std::size_t, std::size_t) {}).findings.size();
  }
  printAll(session, folder, report, done, left);
  if (left > 0) couldNot(countOfProblems(left, report.files, repairs));
}

}  // namespace

void addCheck(CLI::App& app, Invocation& invocation) {
  auto repairs = std::make_shared<bool>(false);
  CLI::App* command = addCommand(
      app, invocation,
      {"check", marked("Read every file of the data folder and tell what is wrong"), "tallyvane check --repair"},
      [repairs](Session& session) { check(session, *repairs); });
  command->add_flag("--repair", *repairs,
                    "Take doubles off the lists, and ask where bills in no list belong; copies the folder first");
}

}  // namespace tallyvane::cli
