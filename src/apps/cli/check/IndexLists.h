// The lists of the bill index: what is wrong in them, and how to set it right.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/bills/Groups.h"
#include "cli/check/Finding.h"
#include "foundation/Value.h"

namespace tallyvane::cli {

/// How often an identifier stands in each list that has it, in the order active, archived, deleted.
using Places = std::vector<std::pair<Group, std::size_t>>;
[[nodiscard]] std::map<std::string, Places> placesIn(const Dictionary& index);

/// Lists that are missing or no lists, and entries that are no identifiers.
[[nodiscard]] Problems problemsOfIndex(const Dictionary& index);

/// What is wrong with where a bill stands; nothing for a bill that stands in one list once.
[[nodiscard]] Problems problemsOfPlaces(const Places& places);

/// Takes out what stands there twice. A bill that several lists have stays in the first of active, archived, deleted:
/// that is where the programs show it. How many entries were taken out; what is no identifier stays.
std::size_t removeDoubles(Dictionary& index);

/// Puts a bill at the end of a list.
void enter(Dictionary& index, std::string_view list, const std::string& bid);

}  // namespace tallyvane::cli
