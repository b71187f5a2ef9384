#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// The zone identifier in the path of a zone file ("…/zoneinfo/Europe/Berlin"); nothing for another path and for a
/// zone that is not known.
[[nodiscard]] std::optional<std::string> zoneOfPath(std::string_view path);

/// The identifier that stands for a TZ value without its colon that is no path: itself when it is a known zone, and
/// "GMT-5" for a rule of one fixed offset such as "EST5" or "<-05>5", whose sign counts westwards. Nothing for rules
/// with daylight saving, which no identifier stands for, and for anything else.
[[nodiscard]] std::optional<std::string> zoneOfRule(std::string_view rule);

}  // namespace tallyvane
