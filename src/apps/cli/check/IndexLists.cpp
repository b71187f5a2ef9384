#include "cli/check/IndexLists.h"

#include <algorithm>
#include <set>

#include "cli/check/Shapes.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

std::map<std::string, Places> placesIn(const Dictionary& index) {
  std::map<std::string, Places> all;
  for (const Group& group : allGroups) {
    for (const std::string& bid : stringsOf(index.get<Array>(group.key))) {
      Places& places = all[bid];
      if (places.empty() || places.back().first.key != group.key) places.emplace_back(group, 0);
      ++places.back().second;
    }
  }
  return all;
}

Problems problemsOfIndex(const Dictionary& index) {
  Problems problems;
  for (const Group& group : allGroups) {
    const std::string odd = oddness("\"" + std::string(group.key) + "\"", index.find(group.key), Shape::texts);
    const bool isList = index.get<Array>(group.key) != nullptr;
    if (!odd.empty())
      problems.push_back({isList ? FindingKind::oddEntry : FindingKind::oddKey, std::string(group.key), odd});
  }
  return problems;
}

Problems problemsOfPlaces(const Places& places) {
  // translators: stands beside the name of a bill, as do the next ones
  if (places.empty()) return {{FindingKind::inNoList, "", translated("is in no list")}};
  Problems problems;
  std::vector<std::string_view> lists;
  for (const auto& [group, count] : places) {
    lists.push_back(group.key);
    if (count > 1)
      problems.push_back(
          {FindingKind::repeated, std::string(group.key),
           countedSentence(count, "stands {} time in \"{}\"", "stands {} times in \"{}\"", count, group.key)});
  }
  if (lists.size() == 2)
    problems.push_back({FindingKind::inSeveralLists, "", sentence("is in {} and {}", lists[0], lists[1])});
  if (lists.size() == 3)
    problems.push_back(
        {FindingKind::inSeveralLists, "", sentence("is in {}, {} and {}", lists[0], lists[1], lists[2])});
  return problems;
}

std::size_t removeDoubles(Dictionary& index) {
  std::set<std::string> seen;
  std::size_t removed = 0;
  for (const Group& group : allGroups) {
    Array* list = index.get<Array>(group.key);
    if (list == nullptr) continue;
    removed += std::erase_if(*list, [&](const Value& entry) {
      const auto* bid = entry.get<std::string>();
      return bid != nullptr && !seen.insert(*bid).second;
    });
  }
  return removed;
}

void enter(Dictionary& index, std::string_view list, const std::string& bid) {
  Array bids = index.valueOr(list, Array());
  bids.emplace_back(bid);
  index.set(list, std::move(bids));
}

}  // namespace tallyvane::cli
