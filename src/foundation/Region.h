// Where the user is: locale, time zone and words.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tallyvane {

/// Decided once in a program's main and handed down; nothing reads the machine's own locale or zone after that. Cheap
/// to copy and free of any library: what is computed from it (Calendar, date and number texts, comparison) is kept per
/// thread and made once per locale and zone.
struct Region {
  std::string locale = "en_US";  ///< an ICU locale identifier, with its keywords
  std::string timeZone = "UTC";  ///< a zone identifier of the tz database

  /// The word table: the text for an English key, or "" when the table lacks it. Unset: no table.
  std::function<std::string(std::string_view)> words;

  /// The user's word for an English key; the key itself when there is none.
  [[nodiscard]] std::string localized(std::string_view key) const {
    std::string text = words ? words(key) : std::string();
    return text.empty() ? std::string(key) : text;
  }
};

}  // namespace tallyvane
