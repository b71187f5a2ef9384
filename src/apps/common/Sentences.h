// The programs' own texts in the user's language: gettext's catalogues with fmt's placeholders. The English text is the
// key; without a catalogue it shows. A program's main chooses the language (see freedesktop/Gettext.h).
#pragma once

#include <fmt/format.h>
#include <libintl.h>

#include <string>
#include <utility>

namespace tallyvane {

/// Marks a text for the catalogues where it stands before it is shown; the text itself.
constexpr const char* marked(const char* text) { return text; }

/// The text in the user's language.
[[nodiscard]] inline std::string translated(const std::string& text) {
  return text.empty() ? std::string() : ::gettext(text.c_str());  // the catalogue's header stands under the empty key
}

/// A text whose placeholders are filled. A translation may put them in another order ("{1} … {0}").
template <typename... Values>
[[nodiscard]] std::string sentence(fmt::format_string<Values...> text, Values&&... values) {
  const fmt::string_view english = text;
  return fmt::vformat(translated({english.data(), english.size()}), fmt::make_format_args(values...));
}

/// A text about `count` things, by the plural rules of the language; the placeholders are filled with `values`, among
/// which the count stands where it is to be shown.
template <typename... Values>
[[nodiscard]] std::string countedSentence(std::size_t count, fmt::format_string<Values...> one,
                                          fmt::format_string<Values...> many, Values&&... values) {
  const fmt::string_view single = one;
  const fmt::string_view several = many;
  const std::string text = ::ngettext(std::string(single.data(), single.size()).c_str(),
                                      std::string(several.data(), several.size()).c_str(), count);
  return fmt::vformat(text, fmt::make_format_args(values...));
}

}  // namespace tallyvane
