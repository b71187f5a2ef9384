// What the commands say of a bill beside the model's own texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cli/terminal/Console.h"
#include "cli/terminal/Table.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

[[nodiscard]] bool isPaidAutomatically(const Dictionary& bill);
/// Whole days from today to the due day, as the model counts them.
[[nodiscard]] std::int64_t daysUntil(const Platform& platform, Date due);

/// The civil day in the user's zone in the ISO 8601 form, "2027-03-01".
[[nodiscard]] std::string isoDay(const Platform& platform, Date date);
/// Day, hour and minute in the user's zone with its distance from UTC, "2027-03-01T09:00-05:00".
[[nodiscard]] std::string isoMinute(const Platform& platform, Date date);

/// The colour of a row's due icon.
[[nodiscard]] Colour colourOf(const Dictionary& row);

/// The due date for people, and as an ISO day for programs; empty without one.
[[nodiscard]] Cell dueDateCell(const Platform& platform, const Dictionary& row);
/// Day and time of day in the form of the locale, and as above for programs.
[[nodiscard]] Cell timeCell(const Platform& platform, Date date);
/// In the locale's currency, and as a plain decimal for programs; null is 0.
[[nodiscard]] Cell amountCell(const Platform& platform, const Value* amount);

}  // namespace tallyvane::cli
