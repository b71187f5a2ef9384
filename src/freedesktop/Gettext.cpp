#include "freedesktop/Gettext.h"

#include <libintl.h>
#include <unicode/locid.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace tallyvane {

namespace {

constexpr const char* domain = "tallyvane";

}  // namespace

std::string catalogueNames(const std::string& locale) {
  UErrorCode failure = U_ZERO_ERROR;
  icu::Locale full(locale.c_str());
  const std::string language = full.getLanguage();
  full.addLikelySubtags(failure);
  if (language == "zh") return std::string(full.getScript()) == "Hant" ? "zh_TW" : "zh_CN";
  const std::string country = full.getCountry();
  return country.empty() ? language : language + "_" + country;
}

void useLanguage(const std::string& locale, const std::string& folder) {
  // The C library always has this locale, and lets LANGUAGE choose the catalogue in it; the user's own it may lack.
  std::setlocale(LC_MESSAGES, "C.UTF-8");
  ::setenv("LANGUAGE", catalogueNames(locale).c_str(), 1);
  ::bindtextdomain(domain, folder.c_str());
  ::bind_textdomain_codeset(domain, "UTF-8");
  ::textdomain(domain);
}

std::string catalogueFolder(const std::string& executable) {
  return (std::filesystem::path(executable).parent_path().parent_path() / "share/locale").string();
}

std::string wordInCatalogue(std::string_view key) {
  if (key.empty()) return {};  // the catalogue's header stands under the empty key
  const std::string english(key);
  const char* text = ::dgettext(domain, english.c_str());
  return text == english.c_str() ? std::string() : text;
}

}  // namespace tallyvane
