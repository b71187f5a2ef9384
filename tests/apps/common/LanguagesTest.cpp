// The command line in the user's language. None of the locales needs to be generated on the machine.
#include <gmock/gmock.h>

#include <sstream>

#include "support/CommandLineHome.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

class LanguagesTest : public ::testing::Test {
 protected:
  LanguagesTest() {
    const Said added = home.run({"add", "Rent", "--due", "today", "--repeat", "never", "--amount", "9"});
    EXPECT_EQ(added.status, 0) << added.text;
  }
  Said overviewIn(const char* locale) {
    home.locale = locale;
    return home.run({"overview"});
  }
  CommandLineHome home;
};

TEST_F(LanguagesTest, AreThoseOfTheLocaleWhereThereIsACatalogueElseEnglish) {
  for (const char* german : {"de_DE.UTF-8", "de_AT.UTF-8", "de_CH"})
    EXPECT_THAT(overviewIn(german).text, HasSubstr("Heute fällig")) << german;
  for (const char* simplified : {"zh_CN.UTF-8", "zh_SG.UTF-8"})
    EXPECT_THAT(overviewIn(simplified).text, Not(HasSubstr("Due today"))) << simplified;
  for (const char* unknown : {"zh_TW.UTF-8", "eo.UTF-8", "C.UTF-8", "en_GB.UTF-8"})
    EXPECT_THAT(overviewIn(unknown).text, HasSubstr("Due today")) << unknown;
}

TEST_F(LanguagesTest, AreWrittenFromTheirOwnSideOnATerminal) {
  for (const auto& [locale, mark] : {std::pair("ar_EG.UTF-8", "\u200f"), std::pair("de_DE.UTF-8", "")}) {
    home.locale = locale;
    std::istringstream lines(home.runOnTerminal({"overview"}).text);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
      EXPECT_THAT(line, StartsWith(mark)) << locale;
      EXPECT_EQ(line.find("\u200f") == std::string::npos, *mark == '\0') << line;
    }
    EXPECT_GE(count, 3) << locale;
  }
}

}  // namespace
}  // namespace tallyvane::testing
