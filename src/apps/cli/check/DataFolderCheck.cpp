#include "cli/check/DataFolderCheck.h"

#include <map>
#include <optional>
#include <utility>

#include "cli/Failure.h"
#include "cli/Reason.h"
#include "cli/check/BillContent.h"
#include "cli/check/IndexLists.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

constexpr std::string_view listEnd = ".plist";

/// What a bill's file holds.
struct SeenBill {
  std::string name;
  std::string bid;  ///< as the content has it
  Problems problems;
  Dictionary content;
};

class FolderCheck {
 public:
  FolderCheck(const Platform& platform, std::string folder) : platform_(platform), folder_(std::move(folder)) {}

  CheckReport run(const CheckProgress& progress);

 private:
  /// The file's root, or a finding about why there is none.
  template <typename T>
  std::optional<T> rootOf(const std::string& file);
  void lookAt(const std::string& file);
  void readToTheEnd(const std::string& file);
  void noteBill(const std::string& file);
  void judgeIndex();
  void judgeBill(const std::string& bid, const SeenBill& bill);
  void judgeListed(const std::string& bid, const Places& places);
  void add(const std::string& file, Problems problems, const std::string& bill = "");
  [[nodiscard]] std::string nameOf(const std::string& bid) const;

  const Platform& platform_;
  const std::string folder_;
  CheckReport report_;
  std::map<std::string, SeenBill> bills_;  ///< by the name of the file without its end
  std::map<std::string, Places> places_;
};

/// What a diagnostic says after the path.
std::string reasonAfter(const std::string& path, const std::string& diagnostic) {
  const std::size_t at = diagnostic.find(path + ": ");
  if (at == std::string::npos) return translated("is a property list of another kind than it should be");
  return sentence("cannot be read: {}", diagnostic.substr(at + path.size() + 2));
}

std::string withoutFile(const Group& group, const std::string& bid) {
  if (group.key == key::ActiveBills) return sentence("the active bill {} has no file", bid);
  if (group.key == key::ArchivedBills) return sentence("the archived bill {} has no file", bid);
  return sentence("the deleted bill {} has no file", bid);
}

CheckReport FolderCheck::run(const CheckProgress& progress) {
  const Result<std::vector<std::string>> names = platform_.files.list(folder_);
  if (!names) couldNot(sentence("The data folder cannot be listed: {}.", names.error()));
  for (std::size_t i = 0; i < names->size(); ++i) {
    const std::string& name = (*names)[i];
    const bool isOurs = !name.starts_with('.') && !platform_.files.isFolder(folder_ + "/" + name);
    if (isOurs) lookAt(name);
    progress(i + 1, names->size());
  }
  judgeIndex();
  return std::move(report_);
}

template <typename T>
std::optional<T> FolderCheck::rootOf(const std::string& file) {
  const std::string path = folder_ + "/" + file;
  Reason reason;
  std::optional<T> root = readPropertyListFile<T>(platform_.files, reason, path);
  if (root) return root;
  const std::string why =
      reason.text.empty() ? translated("is a link to what is not there") : reasonAfter(path, reason.text);
  add(file, {{FindingKind::unreadable, "", why}});
  return std::nullopt;
}

void FolderCheck::lookAt(const std::string& file) {
  ++report_.files;
  if (file == billIndexName) return;  // is read last
  if (file == tagIndexName) {
    if (const auto tags = rootOf<Array>(file)) add(file, problemsOfTags(*tags));
  } else if (file == incomeIndexName) {
    if (const auto income = rootOf<Dictionary>(file)) add(file, problemsOfIncome(*income));
  } else if (file == mailIndexName) {
    if (const auto queue = rootOf<Dictionary>(file)) add(file, problemsOfMails(*queue));
  } else if (file.ends_with(listEnd)) {
    noteBill(file);
  } else {
    readToTheEnd(file);
  }
}

/// A receipt, or what was kept of an unreadable file.
void FolderCheck::readToTheEnd(const std::string& file) {
  if (file.find(".plist.unreadable-") != std::string::npos)
    add(file, {{FindingKind::keptCopy, "", translated("was kept when a file that could not be read was replaced")}});
  constexpr std::size_t block = std::size_t{1} << 20;
  const std::string path = folder_ + "/" + file;
  for (std::uint64_t at = 0;;) {
    const Result<std::string> part = platform_.files.readPart(path, at, block);
    if (!part) return add(file, {{FindingKind::unreadable, "", reasonAfter(path, part.error())}});
    if (part->empty()) return;
    at += part->size();
  }
}

void FolderCheck::noteBill(const std::string& file) {
  std::optional<Dictionary> content = rootOf<Dictionary>(file);
  if (!content) return;
  Problems problems = problemsOfBill(*content);
  for (Problem& problem : missingReceipts(platform_, *content)) problems.push_back(std::move(problem));
  bills_[file.substr(0, file.size() - listEnd.size())] = {content->valueOr(key::Name, std::string()),
                                                          content->valueOr(key::Bid, std::string()),
                                                          std::move(problems), std::move(*content)};
}

void FolderCheck::judgeIndex() {
  const std::string file(billIndexName);
  const bool isThere = platform_.files.exists(folder_ + "/" + file);
  if (!isThere && !bills_.empty()) add(file, {{FindingKind::unreadable, "", translated("is not there")}});
  const auto index = isThere ? rootOf<Dictionary>(file) : Dictionary();
  if (index) {
    if (isThere) add(file, problemsOfIndex(*index));
    places_ = placesIn(*index);
  }
  for (const auto& [bid, places] : places_) judgeListed(bid, places);
  for (const auto& [bid, bill] : bills_) {
    if (index)
      judgeBill(bid, bill);
    else
      add(bid + std::string(listEnd), bill.problems, bill.name);
  }
}

void FolderCheck::judgeListed(const std::string& bid, const Places& places) {
  const std::string file(billIndexName);
  const std::string path = billPathIn(folder_, bid);
  if (path.empty()) {
    add(file, {{FindingKind::oddEntry, std::string(places.front().first.key),
                sentence("\"{}\" is no identifier of a bill", bid)}});
  } else if (!platform_.files.exists(path)) {
    add(file,
        {{FindingKind::withoutFile, std::string(places.front().first.key), withoutFile(places.front().first, bid)}});
  }
  Problems problems = problemsOfPlaces(places);
  if (nameOf(bid).empty())
    for (Problem& problem : problems) problem.text = bid + " " + problem.text;
  add(file, std::move(problems), nameOf(bid));
}

void FolderCheck::judgeBill(const std::string& bid, const SeenBill& bill) {
  const std::string file = bid + std::string(listEnd);
  const bool isListed = places_.contains(bid);
  if (!isListed && bill.bid.empty() && bill.name.empty())
    return add(file, {{FindingKind::foreignFile, "", translated("is none of Tallyvane's files")}});
  if (!bill.bid.empty() && bill.bid != bid) {
    add(file,
        {{FindingKind::otherBill, std::string(key::Bid), sentence("holds the bill {}; a copy, perhaps", bill.bid)}},
        bill.name);
    if (!isListed) return;
  }
  if (!isListed) {
    add(file, problemsOfPlaces({}), bill.name);
    report_.unlisted.push_back({bid, bill.content});
  }
  add(file, bill.problems, bill.name);
}

void FolderCheck::add(const std::string& file, Problems problems, const std::string& bill) {
  for (Problem& problem : problems) report_.findings.push_back({std::move(problem), file, bill});
}

std::string FolderCheck::nameOf(const std::string& bid) const {
  const auto seen = bills_.find(bid);
  return seen == bills_.end() ? "" : seen->second.name;
}

}  // namespace

CheckReport checkDataFolder(const Platform& platform, const std::string& folder, const CheckProgress& progress) {
  return FolderCheck(platform, folder).run(progress);
}

}  // namespace tallyvane::cli
