// How numbers, dates and data are spelled in a property list, both ways. Private to PropertyList*.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Date.h"

namespace tallyvane {

/// The first and last instant that a property list can name.
inline constexpr Date earliestWrittenDate = distantPast;
inline constexpr Date latestWrittenDate =
    std::chrono::sys_days{std::chrono::year{10000} / 1 / 1} - std::chrono::seconds{1};

/// Each reads the whole text of one element, without surrounding blanks, and throws a PropertyListFault otherwise.
[[nodiscard]] std::int64_t integerOfText(std::string_view text);
[[nodiscard]] double realOfText(std::string_view text);
[[nodiscard]] Date dateOfText(std::string_view text);
/// White space may stand anywhere.
[[nodiscard]] std::vector<std::uint8_t> dataOfBase64(std::string_view text);

void appendInteger(std::string& to, std::int64_t number);
void appendReal(std::string& to, double number);
/// A date outside the years 1 to 9999 becomes the nearest end of them.
void appendDate(std::string& to, Date date);
/// Lines of 76 characters, each after `depth` tabs and ended by a line feed.
void appendBase64Lines(std::string& to, const std::vector<std::uint8_t>& bytes, int depth);

}  // namespace tallyvane
