// Words in the user's language, from gettext's catalogues.
#pragma once

#include <string>
#include <string_view>

namespace tallyvane {

/// Makes `locale` (an ICU identifier) the language of this process's messages, whether or not the machine has
/// generated that locale, with the catalogues LANGUAGE/LC_MESSAGES/tallyvane.mo below `folder`. Changes the process's
/// environment: called once, in main, before any thread starts. Only messages change; numbers and dates are ICU's.
void useLanguage(const std::string& locale, const std::string& folder);

/// Where the catalogues of an installed program lie: "share/locale" beside the folder of its executable.
[[nodiscard]] std::string catalogueFolder(const std::string& executable);

/// The word table of the language in use, for Region::words: "" for a key that it lacks.
[[nodiscard]] std::string wordInCatalogue(std::string_view key);

/// The names under which gettext looks for a locale's catalogue, the best first, with colons between them: "de_AT"
/// (which includes "de"); Chinese goes by its script, so that "zh_Hans_SG" is "zh_CN".
[[nodiscard]] std::string catalogueNames(const std::string& locale);

}  // namespace tallyvane
