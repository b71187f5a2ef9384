#include <fmt/format.h>

#include <memory>
#include <optional>

#include "cli/BillChange.h"
#include "cli/BillLookup.h"
#include "cli/BillText.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/Progress.h"
#include "cli/Table.h"
#include "cli/check/DataFolderCheck.h"
#include "cli/check/IndexLists.h"
#include "cli/commands/Commands.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// A bill in no list, and the list that the person wants it in.
struct Choice {
  std::string bid;
  std::string name;
  Group list;
};

struct Repair {
  std::string copy;  ///< the data folder as it was; "" when there was nothing to repair
  std::size_t doubles = 0;
  std::vector<Choice> listed;
};

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
