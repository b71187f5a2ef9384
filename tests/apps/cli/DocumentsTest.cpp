// Every command that the documents show is run, and must print what they show.
#include <filesystem>
#include <fstream>
#include <regex>

#include "support/CliDesktop.h"

namespace tallyvane::testing {
namespace {

struct Example {
  std::string command;  ///< as one types it, without the prompt
  std::string output;   ///< what is shown below it; nothing where the output goes elsewhere
};

std::vector<std::string> linesOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The indented blocks' commands, each with the lines below it.
std::vector<Example> examplesOf(const std::vector<std::string>& lines) {
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

/// Words as the shell splits them, up to a pipe or a redirection.
std::vector<std::string> wordsOf(const std::string& command) {
  std::vector<std::string> words;
  const std::regex word(R"re('([^']*)'|"([^"]*)"|([^\s'"]+))re");
  for (std::sregex_iterator found(command.begin(), command.end(), word), end; found != end; ++found) {
    const std::smatch& match = *found;
    if (match.str() == "|" || match.str() == ">") break;
    words.push_back(match[1].matched ? match[1].str() : match[2].matched ? match[2].str() : match[3].str());
  }
  return words;
}

struct Documents : ::testing::TestWithParam<const char*> {
  Documents() {
    cli.terminal = {.interactive = true, .width = 100};
    cli.asker = [this](const std::string& question) {
      asked += question + "y\n";
      return std::optional<std::string>("y");
    };
    (void)cli.desktop.files.createFolder("/media/disk");
    cli.desktop.files.content["/home/ada/Downloads/rent.pdf"] = "%PDF";
  }
  std::string run(const std::string& command) {
    std::vector<std::string> words = wordsOf(command);
    words.erase(words.begin());
    asked.clear();
    const Outcome outcome = cli.run(words);
    return asked + outcome.out + outcome.err;
  }
  CliDesktop cli;
  std::string asked;
};

TEST_P(Documents, ShowWhatTheCommandsPrint) {
  const auto lines = linesOf(std::filesystem::path(TALLYVANE_PROJECT_FOLDER) / GetParam());
  ASSERT_FALSE(lines.empty());
  for (const Example& example : examplesOf(lines)) {
    const std::string printed = run(example.command);
    const bool goesElsewhere = example.command.find(" | ") != std::string::npos;
    EXPECT_EQ(goesElsewhere ? "" : printed, example.output) << "$ " << example.command;
  }
}

TEST_P(Documents, NameOnlyCommandsAndOptionsThatThereAre) {
  const std::regex quoted("`tallyvane ([^`]*)`");
  for (const std::string& line : linesOf(std::filesystem::path(TALLYVANE_PROJECT_FOLDER) / GetParam())) {
    for (std::sregex_iterator found(line.begin(), line.end(), quoted), end; found != end; ++found) {
      std::vector<std::string> words = wordsOf((*found)[1]);
      words.emplace_back("--help");
      EXPECT_EQ(cli.run(words).err, "") << (*found)[1];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, Documents,
                         ::testing::Values("README.md", "docs/architecture.md", "docs/calendars.md", "docs/exports.md",
                                           "docs/file-formats.md", "docs/platform.md", "docs/settings.md"),
                         [](const auto& document) {
                           const std::string stem = std::filesystem::path(document.param).stem();
                           return std::regex_replace(stem, std::regex("[^A-Za-z]"), "");
                         });

}  // namespace
}  // namespace tallyvane::testing
