// What may come next on a command line that is being typed.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tallyvane::cli {

struct Candidate {
  std::string text;
  std::string description;
};

struct Completion {
  std::vector<Candidate> candidates;  ///< commands, options and values that the command line itself knows
  std::string valueKind;              ///< the word that help has for the value that may stand here: "BILL"; or empty
};

/// `words` are those after the program's name, the last being the one that is typed, which may be empty. Taken from the
/// commands as they were added, hidden ones left out; what begins differently from the last word is not left out, for
/// shells match in ways of their own.
[[nodiscard]] Completion completionOf(CLI::App& app, const std::vector<std::string>& words);

}  // namespace tallyvane::cli
