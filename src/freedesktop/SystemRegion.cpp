#include "freedesktop/SystemRegion.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "freedesktop/Gettext.h"
#include "freedesktop/PosixLocale.h"
#include "freedesktop/PosixTimeZone.h"

namespace tallyvane {

namespace {

// A variable that is empty counts as unset, as it does for the C library.
std::string variable(const RegionSources& sources, const char* name) { return sources.environment(name).value_or(""); }

std::string localeTold(const RegionSources& sources, Log& log) {
  const std::string all = variable(sources, "LC_ALL");
  std::string name = all;
  for (const char* next : {"LC_MESSAGES", "LANG"})
    if (name.empty()) name = variable(sources, next);
  std::optional<PosixLocale> locale = PosixLocale::read(name);
  const bool isPlain = name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.");
  if (!locale && !isPlain) log.diagnostic("\"" + name + "\" is no locale; taking en_US. Set LANG to one.");
  if (!locale) locale = PosixLocale{"en", "", "US", ""};
  const auto money = PosixLocale::read(all.empty() ? variable(sources, "LC_MONETARY") : "");
  if (money && !money->country.empty() && money->country != locale->country)
    *locale = {locale->language, locale->script, money->country, ""};
  return locale->identifier();
}

std::optional<std::string> zoneOfFile(const RegionSources& sources, const std::string& path) {
  auto zone = zoneOfPath(path);
  const auto target = zone ? std::nullopt : sources.linkTarget(path);
  return target ? zoneOfPath(*target) : zone;
}

std::string zoneOfVariable(const RegionSources& sources, const std::string& value, Log& log) {
  const std::string text = value.starts_with(':') ? value.substr(1) : value;
  if (text.empty()) return "UTC";
  const auto zone = text.starts_with('/') ? zoneOfFile(sources, text) : zoneOfRule(text);
  if (!zone) log.diagnostic("TZ=" + value + " names no time zone; taking UTC. Set it to one such as Europe/Berlin.");
  return zone.value_or("UTC");
}

std::string firstWord(const std::string& text) {
  constexpr const char* blanks = " \t\r\n";
  const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(begin, text.find_first_of(blanks, begin) - begin);
}

std::string zoneTold(const RegionSources& sources, Log& log) {
  if (const auto value = sources.environment("TZ")) return zoneOfVariable(sources, *value, log);
  if (const auto zone = zoneOfFile(sources, "/etc/localtime")) return *zone;
  const auto named = sources.fileText("/etc/timezone");
  const auto zone = named ? zoneOfRule(firstWord(*named)) : std::nullopt;
  return zone.value_or("UTC");
}

std::optional<std::string> environmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::string> symbolicLinkTarget(const std::string& path) {
  std::error_code failure;
  const std::filesystem::path target = std::filesystem::read_symlink(path, failure);
  return failure ? std::nullopt : std::optional(target.string());
}

std::optional<std::string> textOfFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

Region regionTold(const RegionSources& sources, Log& log) {
  return {.locale = localeTold(sources, log), .timeZone = zoneTold(sources, log), .words = {}};
}

Region systemRegion(Log& log) {
  Region region = regionTold({environmentVariable, symbolicLinkTarget, textOfFile}, log);
  region.words = wordInCatalogue;
  return region;
}

std::string systemLocale() {
  class : public Log {
    void line(std::string_view) override {}
    void diagnostic(std::string_view) override {}
  } unheard;
  return localeTold({environmentVariable, symbolicLinkTarget, textOfFile}, unheard);
}

}  // namespace tallyvane
