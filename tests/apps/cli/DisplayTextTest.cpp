#include "cli/terminal/DisplayText.h"

#include <gmock/gmock.h>

#include <sstream>

#include "cli/terminal/Table.h"
#include "support/Matchers.h"

namespace tallyvane::cli {
namespace {

using namespace tallyvane::testing;

TEST(DisplayText, MeasuresTextsInTheColumnsThatATerminalGivesThem) {
  const struct {
    const char* text;
    int width;
  } cases[] = {{"", 0},
               {"Rent", 4},
               {"Miete für März", 14},
               {"家賃", 4},
               {"e\u0301tude", 5},
               {"한글", 4},
               {"\u1112\u1161\u11ab", 2},
               {"ＡＢ", 4},
               {"🏠", 2},
               {"👨‍👩‍👧", 2},
               {"❤\ufe0f", 2},
               {"🇩🇪", 2},
               {"नि", 1},
               {"\u200d", 0},
               {"שכר", 3}};
  for (const auto& c : cases) EXPECT_EQ(displayWidth(c.text), c.width) << c.text;
}

TEST(DisplayText, CutsAtWholeCharactersWithAnEllipsis) {
  const struct {
    const char* text;
    int width;
    const char* cut;
  } cases[] = {{"Rent", 4, "Rent"},
               {"Rent!", 4, "Ren…"},
               {"家賃の支払い", 5, "家賃…"},
               {"家賃の支払い", 6, "家賃…"},
               {"Rent", 1, "…"},
               {"Rent", 0, ""},
               {"e\u0301e\u0301e\u0301", 2, "e\u0301…"},
               {"👨‍👩‍👧👨‍👩‍👧", 3, "👨‍👩‍👧…"}};
  for (const auto& c : cases) EXPECT_EQ(fitted(c.text, c.width), c.cut) << c.text;
}

TEST(DisplayText, LetsNothingThroughThatATerminalWouldObey) {
  const struct {
    std::string text;
    const char* shown;
  } cases[] = {{"a\x1b[31mb", "a\ufffd[31mb"}, {"a\tb\nc\r", "a b c "},
               {"\x07\x7f", "\ufffd\ufffd"},   {"\u009b31m", "\ufffd31m"},
               {"a\u202eb", "a\ufffdb"},       {"\u2028", " "},
               {"\xff\xc3", "\ufffd\ufffd"},   {"👨‍👩‍👧 שכר", "👨‍👩‍👧 שכר"}};
  for (const auto& c : cases) EXPECT_EQ(printable(c.text), c.shown) << c.shown;
  EXPECT_EQ(printableLines("a\x1b\nb\r"), "a\ufffd\nb\n");
  EXPECT_EQ(escapedForTerminal("{\n \"a\": \"\u009bx\u202e家\"}"), "{\n \"a\": \"\\u009bx\\u202e家\"}");
}

TEST(DisplayText, WrapsAtBlanksAndBreaksOnlyWordsThatAreTooLong) {
  EXPECT_THAT(wrapped("Cancel by letter in time\n\nsoon", 10),
              ElementsAre("Cancel by", "letter in", "time", "", "soon"));
  EXPECT_THAT(wrapped("abcdefghij kl", 4), ElementsAre("abcd", "efgh", "ij", "kl"));
  EXPECT_THAT(wrapped("", 10), ElementsAre(""));
  EXPECT_THAT(wrapped("家賃", 1), ElementsAre("家", "賃"));
}

TEST(Table, FitsEveryWidthAndShowsAllWhereThereIsRoom) {
  Table table({{"Bill", false, 8, 0}, {"Due", false, 0, 0}, {"Amount", true, 0, 1}, {"Repeats", false, 0, 2}});
  table.startSection("Due Soon");
  table.add({"家賃と駐車場の支払い", "Due in 1 day", {"$1,250.00", "1250.00"}, "Every month"});
  table.add({"Electricity & water", "Due in 3 days", {"$5.00", "5.00"}, "Every 2 weeks"});
  for (int width = 10; width <= 100; ++width) {
    std::ostringstream out;
    std::ostringstream err;
    Console console(out, err, {.interactive = true, .width = width});
    table.print(console);
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) ASSERT_LE(displayWidth(line), width) << line;
    if (width == 62) {
      EXPECT_NE(out.str().find("家賃と駐車場の支払い  Due in 1 day"), std::string::npos) << out.str();
    }
  }
}

TEST(Console, ColoursOnlyWhereTheTerminalShowsThem) {
  std::ostringstream out;
  const auto painted = [&](Palette palette, Colour colour) {
    return Console(out, out, {.interactive = true, .palette = palette}).painted("x", colour);
  };
  EXPECT_EQ(painted(Palette::none, Colour::red), "x");
  EXPECT_EQ(painted(Palette::sixteen, Colour::red), "\x1b[31mx\x1b[0m");
  EXPECT_EQ(painted(Palette::many, Colour::blue), "\x1b[38;5;63mx\x1b[0m");
}

}  // namespace
}  // namespace tallyvane::cli
