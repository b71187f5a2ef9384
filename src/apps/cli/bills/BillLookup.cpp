#include "cli/bills/BillLookup.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <functional>
#include <set>

#include "cli/Failure.h"
#include "cli/Reason.h"
#include "cli/input/Similar.h"
#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/BillIndex.h"
#include "storage/DataFolder.h"
#include "storage/NewestBackup.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

using Matches = std::function<bool(const ListedBill&)>;

/// From the surest way to name a bill to the least sure.
std::array<Matches, 5> waysToName(const std::string& text) {
  const std::string plain = folded(text);
  return {[text](const ListedBill& bill) { return bill.bid == text; },
          [text](const ListedBill& bill) { return bill.name() == text; },
          [plain](const ListedBill& bill) { return folded(bill.name()) == plain; },
          [text](const ListedBill& bill) { return bill.name().starts_with(text); },
          [plain](const ListedBill& bill) { return folded(bill.name()).starts_with(plain); }};
}

/// The matches of the first way that has any, in the first group that has any.
std::vector<ListedBill> bestMatches(const std::vector<ListedBill>& bills, const std::string& text,
                                    const std::vector<Group>& groups) {
  std::vector<ListedBill> found;
  if (text.empty()) return found;
  for (const Matches& matches : waysToName(text)) {
    for (const Group& group : groups) {
      std::copy_if(bills.begin(), bills.end(), std::back_inserter(found),
                   [&](const ListedBill& bill) { return bill.group.key == group.key && matches(bill); });
      if (!found.empty()) return found;
    }
  }
  return found;
}

std::string described(const ListedBill& bill) { return fmt::format("\"{}\" ({})", bill.name(), bill.bid); }

[[noreturn]] void failAmbiguous(const std::string& text, const std::vector<ListedBill>& found) {
  std::vector<std::string> names;
  for (const ListedBill& bill : found) names.push_back(described(bill));
  couldNot(countedSentence(found.size(), "\"{}\" fits {} bill: {}. Give more of the name, or the identifier.",
                           "\"{}\" fits {} bills: {}. Give more of the name, or the identifier.", text, found.size(),
                           fmt::join(names, ", ")));
}

/// A command looks bills up in all lists, among the active or the archived ones, or among those that can come back.
std::string noSuchBill(const std::string& text, const std::vector<Group>& groups) {
  const auto includes = [&](const Group& wanted) {
    return std::any_of(groups.begin(), groups.end(), [&](const Group& group) { return group.key == wanted.key; });
  };
  if (groups.size() == std::size(allGroups)) return sentence("There is no bill \"{}\".", text);
  if (includes(deletedBills)) return sentence("There is no archived or deleted bill \"{}\".", text);
  if (includes(archivedBills)) return sentence("There is no active or archived bill \"{}\".", text);
  return sentence("There is no active bill \"{}\".", text);
}

std::string stateOf(const ListedBill& bill) {
  if (bill.group.key == key::ActiveBills) return sentence("{} is active.", described(bill));
  if (bill.group.key == key::ArchivedBills) return sentence("{} is archived.", described(bill));
  return sentence("{} is deleted.", described(bill));
}

[[noreturn]] void failUnknown(const std::vector<ListedBill>& bills, const std::string& text,
                              const std::vector<Group>& groups) {
  const std::string missing = noSuchBill(text, groups);
  const auto elsewhere = bestMatches(bills, text, {std::begin(allGroups), std::end(allGroups)});
  if (elsewhere.size() == 1) couldNot(missing + " " + stateOf(elsewhere[0]));

  std::vector<std::string> names;
  for (const ListedBill& bill : bills) names.push_back(bill.name());
  const auto similar = nearest(text, names);
  couldNot(similar ? missing + " " + sentence("Did you mean \"{}\"?", *similar) : missing);
}

/// What the person may do about a list of bills that cannot be used, beside putting a good copy back.
std::string wayBack(const Platform& platform) {
  const auto backup = newestBackup(platform);
  if (!backup || !platform.files.exists(*backup)) return "";
  return " " + translated("\"tallyvane restore-backup\" brings back the last backup.");
}

}  // namespace

std::string requireDataFolder(const Platform& platform) {
  if (const auto unfinished = programs::unfinishedChange(platform)) couldNot(*unfinished);
  const std::optional<std::string> folder = QMBillsLoader{platform}.tallyvaneDirectory();
  if (!folder) {
    couldNot(translated(
        "It cannot be told where your own data folder lies. Name it again with \"tallyvane location --set FOLDER "
        "--adopt\", or go back to the usual one with \"tallyvane location --reset --adopt\"."));
  }
  if (platform.files.isFolder(*folder)) return *folder;
  const bool isOwn = boolSetting(platform.defaults, key::CustomLocationEnabled);
  couldNot(sentence("The data folder is not there: {}.", *folder) + " " +
           (isOwn ? translated("Connect the disk that it is on, or choose another place: tallyvane location --help")
                  : translated("Make it or bring it back, and check its permissions.")));
}

void requireReadableData(const Platform& platform) {
  const std::string path = requireDataFolder(platform) + "/" + std::string(billIndexName);
  Reason reason;
  const auto index = readPropertyListFile<Dictionary>(platform.files, reason, path);
  if (!reason.text.empty())
    couldNot(sentence("The list of bills: {}. Put back a good copy of this file, or move it away.", reason.text) +
             wayBack(platform));
  if (const auto odd = index ? oddListOf(*index) : std::nullopt) {
    couldNot(sentence("The list of bills: \"{}\" is not a list in {}. Put back a good copy of this file.", *odd, path) +
             wayBack(platform));
  }
}

void requireReadableFile(const Platform& platform, const std::string& path,
                         fmt::format_string<const std::string&> refusal) {
  Reason reason;
  if (readPropertyListFile<Dictionary>(platform.files, reason, path) || reason.text.empty()) return;
  couldNot(sentence<const std::string&>(refusal, reason.text));
}

std::vector<Dictionary> contentsOf(const Platform& platform, const std::vector<Group>& groups) {
  std::vector<Dictionary> contents;
  for (ListedBill& bill : allBills(platform)) {
    const bool isMeant =
        std::any_of(groups.begin(), groups.end(), [&](const Group& g) { return g.key == bill.group.key; });
    if (isMeant) contents.push_back(std::move(bill.content));
  }
  return contents;
}

std::vector<ListedBill> allBills(const Platform& platform) {
  requireReadableData(platform);
  QMBillsLoader loader{platform};
  const std::string folder = dataFolder(platform);
  std::vector<ListedBill> bills;
  std::set<std::string> seen;
  for (const Group& group : allGroups) {
    for (std::string& bid : loader.getListOfBills(group.key).value_or(std::vector<std::string>())) {
      if (!seen.insert(bid).second) continue;
      auto content = readPropertyListFile<Dictionary>(platform.files, platform.log, billPathIn(folder, bid));
      if (content) bills.push_back({std::move(bid), group, std::move(*content)});
    }
  }
  return bills;
}

ListedBill findBill(const Platform& platform, const std::string& text, const std::vector<Group>& groups) {
  const std::vector<ListedBill> bills = allBills(platform);
  std::vector<ListedBill> found = bestMatches(bills, text, groups);
  if (found.empty()) failUnknown(bills, text, groups);
  if (found.size() > 1) failAmbiguous(text, found);
  return std::move(found.front());
}

void requireUnusedName(const Platform& platform, const std::string& name, const std::string& exceptBid,
                       const std::vector<Group>& groups) {
  for (const ListedBill& bill : allBills(platform)) {
    const bool counts =
        std::any_of(groups.begin(), groups.end(), [&](const Group& g) { return g.key == bill.group.key; });
    if (!counts || bill.bid == exceptBid || bill.name() != name) continue;
    couldNot(bill.group.key == key::ActiveBills
                 ? sentence("There is an active bill \"{}\" already; reminders are found by name. Choose another name, "
                            "or add --force.",
                            name)
                 : sentence("There is an archived bill \"{}\" already; reminders are found by name. Choose another "
                            "name, or add --force.",
                            name));
  }
}

}  // namespace tallyvane::cli
