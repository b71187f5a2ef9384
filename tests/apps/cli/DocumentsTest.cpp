// Every command that the documents show is run, and must print what they show.
#include <filesystem>
#include <regex>

#include "support/CliDesktop.h"
#include "support/ShellWords.h"
#include "support/ShownExamples.h"

namespace tallyvane::testing {
namespace {

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
