// Texts, paths and counts that a person typed, checked. All but paths fail the command with a sentence on what is
// wrong.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallyvane::cli {

/// Without blanks at its ends; without line breaks and other control characters, and not empty: then the sentence says
/// what must not be.
[[nodiscard]] std::string nameInput(std::string_view text, const std::string& ifEmpty);
/// One line, possibly empty, such as an address.
[[nodiscard]] std::string lineInput(std::string_view text);
/// Several lines: line feeds and tabs may stand in it.
[[nodiscard]] std::string notesInput(std::string_view text);
/// Checked as names, each kept once; a single empty one gives none.
[[nodiscard]] std::vector<std::string> tagsInput(const std::vector<std::string>& texts);
/// The absolute path that a text names, seen from the current folder; "" for an empty text, and where that folder is
/// gone.
[[nodiscard]] std::string absolutePath(const std::string& text);
/// A whole number of that range. `what` is the option or the setting that asks for it.
[[nodiscard]] std::int64_t countInput(std::string_view what, std::string_view text, std::int64_t least,
                                      std::int64_t most);

}  // namespace tallyvane::cli
