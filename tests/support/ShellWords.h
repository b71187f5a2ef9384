// Command lines as a person types them.
#pragma once

#include <regex>
#include <string>
#include <vector>

namespace tallyvane::testing {

/// Words as the shell splits them, up to a pipe or a redirection.
inline std::vector<std::string> wordsOf(const std::string& command) {
  std::vector<std::string> words;
  const std::regex word(R"re('([^']*)'|"([^"]*)"|([^\s'"]+))re");
  for (std::sregex_iterator found(command.begin(), command.end(), word), end; found != end; ++found) {
    const std::smatch& match = *found;
    if (match.str() == "|" || match.str() == ">") break;
    words.push_back(match[1].matched ? match[1].str() : match[2].matched ? match[2].str() : match[3].str());
  }
  return words;
}

}  // namespace tallyvane::testing
