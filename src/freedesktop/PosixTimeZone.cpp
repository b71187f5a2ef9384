#include "freedesktop/PosixTimeZone.h"

#include <fmt/format.h>
#include <unicode/timezone.h>

#include <memory>
#include <regex>

namespace tallyvane {

namespace {

bool isKnown(const std::string& zone) {
  const std::unique_ptr<icu::TimeZone> made(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)));
  return !zone.empty() && *made != icu::TimeZone::getUnknown();
}

std::string identifierOf(const std::smatch& offset) {
  const bool isWest = offset.str(1) != "-";
  const int hours = std::stoi(offset.str(2));
  const int minutes = offset[3].matched ? std::stoi(offset.str(3)) : 0;
  if (hours == 0 && minutes == 0) return "UTC";
  return fmt::format("GMT{}{:02}:{:02}", isWest ? '-' : '+', hours, minutes);
}

}  // namespace

std::optional<std::string> zoneOfPath(std::string_view path) {
  constexpr std::string_view folder = "zoneinfo/";
  const std::size_t at = path.rfind(folder);
  if (at == std::string_view::npos) return std::nullopt;
  std::string_view zone = path.substr(at + folder.size());
  for (const std::string_view variant : {"posix/", "right/"})
    if (zone.starts_with(variant)) zone.remove_prefix(variant.size());
  return isKnown(std::string(zone)) ? std::optional(std::string(zone)) : std::nullopt;
}

std::optional<std::string> zoneOfRule(std::string_view rule) {
  static const std::regex fixedOffset(
      "(?:[A-Za-z]{3,}|<[A-Za-z0-9+-]{3,}>)([+-]?)([0-9]{1,2})(?::([0-9]{2})(?::00)?)?");
  const std::string text(rule);
  if (isKnown(text)) return text;
  std::smatch offset;
  if (!std::regex_match(text, offset, fixedOffset)) return std::nullopt;
  const std::string zone = identifierOf(offset);
  return isKnown(zone) ? std::optional(zone) : std::nullopt;
}

}  // namespace tallyvane
