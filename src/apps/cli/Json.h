// Bills as JSON: stable keys, dates in the ISO 8601 form of the user's days, numbers as numbers, absent things null.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/Console.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

using Json = nlohmann::ordered_json;

/// A bill with its display keys.
[[nodiscard]] Json billJson(const Platform& platform, const Dictionary& row, std::string_view groupWord);

/// Prints it indented, with characters escaped that a terminal would obey.
void printJson(Console& console, const Json& json);
/// Prints it on one line.
void printJsonLine(Console& console, const Json& json);

}  // namespace tallyvane::cli
