#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// The parts of a locale's name as the C library writes it: "sr_RS.UTF-8@latin".
struct PosixLocale {
  std::string language;  ///< "sr"
  std::string script;    ///< "Latn", or "" for the language's usual one
  std::string country;   ///< "RS", or ""
  std::string variant;   ///< "VALENCIA" of ca_ES@valencia, or ""

  /// Nothing for "C", "POSIX" and what is not a locale's name.
  [[nodiscard]] static std::optional<PosixLocale> read(std::string_view name);
  /// The ICU identifier: "sr_Latn_RS".
  [[nodiscard]] std::string identifier() const;
};

}  // namespace tallyvane
