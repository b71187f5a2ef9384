#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tallyvane::cli {

/// What is wrong with the arguments, as a sentence without its end: in the user's language where the parser's text is
/// one of the usual ones, else as the parser has it.
[[nodiscard]] std::string parseSentence(const CLI::ParseError& error);

}  // namespace tallyvane::cli
