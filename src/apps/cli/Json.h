// Bills as JSON: stable keys, dates in the ISO 8601 form of the user's days, numbers as numbers, absent things null.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/terminal/Console.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

using Json = nlohmann::ordered_json;

/// A bill with its display keys.
[[nodiscard]] Json billJson(const Platform& platform, const Dictionary& row, std::string_view groupWord);

/// An entry of a payment list.
[[nodiscard]] Json paymentJson(const Platform& platform, const Dictionary& payment);

/// A 32-bit float in the fewest digits that tell it from its neighbours: 39.9, not 39.900001525878906. What is no
/// number is null.
[[nodiscard]] Json floatJson(float number);
/// The same for a float that a value holds widened.
[[nodiscard]] Json floatJson(const Value* number);

/// Prints it indented, with characters escaped that a terminal would obey.
void printJson(Console& console, const Json& json);
/// Prints it on one line.
void printJsonLine(Console& console, const Json& json);

}  // namespace tallyvane::cli
