// The commands that a document shows, with what it shows below them.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tallyvane::testing {

struct Example {
  std::string command;  ///< as one types it, without the prompt
  std::string output;   ///< what is shown below it; nothing where the output goes elsewhere
};

inline std::vector<std::string> linesOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The indented blocks' commands, each with the lines below it.
inline std::vector<Example> examplesOf(const std::vector<std::string>& lines) {
  std::vector<Example> examples;
  bool open = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool goesOn = lines[i].empty() && i + 1 < lines.size() && lines[i + 1].starts_with("    ") &&
                        !lines[i + 1].starts_with("    $");  // a blank line within the output
    if (lines[i].starts_with("    $ ")) {
      open = lines[i].starts_with("    $ tallyvane");
      if (open) examples.push_back({lines[i].substr(6), ""});
    } else if (open && (goesOn || lines[i].starts_with("    "))) {
      examples.back().output += (lines[i].empty() ? "" : lines[i].substr(4)) + "\n";
    } else {
      open = false;
    }
  }
  return examples;
}

}  // namespace tallyvane::testing
