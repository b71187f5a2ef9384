// Text as a terminal shows it: safe to print, measured and cut in columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallyvane::cli {

/// The text on one line, with nothing in it that a terminal would obey: line breaks and tabs become blanks; control
/// characters, embeddings and overrides of the writing direction and what is not UTF-8 become U+FFFD.
[[nodiscard]] std::string printable(std::string_view text);
/// The same, but line breaks stay.
[[nodiscard]] std::string printableLines(std::string_view text);

/// JSON text in which what a terminal would obey is written as \uXXXX, which reads back the same.
[[nodiscard]] std::string escapedForTerminal(std::string_view json);

/// How many columns a printable text takes: wide characters and emoji two, combining ones none. Characters whose
/// width depends on the font count as one.
[[nodiscard]] int displayWidth(std::string_view text);
/// The text itself when it fits the width, else as many of its characters as fit before an ellipsis. A character with
/// its combining marks is never split. No width gives no text.
[[nodiscard]] std::string fitted(std::string_view text, int width);
/// The text's lines, each broken at blanks into lines of at most that width; a longer word is broken within. At least
/// one line.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, int width);
/// The text with blanks after it, up to the width.
[[nodiscard]] std::string padded(std::string_view text, int width);

}  // namespace tallyvane::cli
