// Rows for people on a terminal and for programs in a pipe.
#pragma once

#include <string>
#include <vector>

#include "cli/terminal/Console.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

/// One field: what a person reads, and what a program reads in a pipe.
struct Cell {
  Cell(std::string text) : shown(text), plain(std::move(text)) {}
  Cell(const char* text) : Cell(std::string(text)) {}
  Cell(std::string shownText, std::string plainText, Colour shownColour = Colour::none)
      : shown(std::move(shownText)), plain(std::move(plainText)), colour(shownColour) {}

  std::string shown;
  std::string plain;
  Colour colour = Colour::none;
};

/// An English word of the program's own that is marked for the catalogues: people read it in their language.
[[nodiscard]] inline Cell wordCell(const std::string& english) { return {translated(english), english}; }

/// The same for a text whose placeholders are filled.
template <typename... Values>
[[nodiscard]] Cell sentenceCell(fmt::format_string<const Values&...> text, const Values&... values) {
  return {sentence<const Values&...>(text, values...), fmt::format(text, values...)};
}

struct Column {
  std::string title;  ///< in English; shown in the user's language
  bool alignRight = false;
  int narrowest = 0;  ///< may be cut down to so many columns; 0 is never cut while another column can give way
  int leavesAt = 0;   ///< on a narrow terminal the column with the highest number leaves first; 0 stays
};

/// On a terminal: a header, aligned columns, every line within the terminal's width (of 10 at least); columns that may
/// be cut are cut first, then columns leave, then even the first is cut. In a pipe: one line a row, fields in full with
/// tabs between them, no header; the section's title is the first field where there are sections.
class Table {
 public:
  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

  /// The rows added from here on stand under this title, in English; a person sees it in their language.
  void startSection(std::string title) { sections_.push_back({std::move(title), rows_.size()}); }
  /// As many cells as there are columns. Texts are made printable here.
  void add(std::vector<Cell> cells);
  void print(Console& console) const;

 private:
  struct Section {
    std::string title;
    std::size_t firstRow;
  };

  void printForPeople(Console& console) const;
  void printForPrograms(Console& console) const;
  [[nodiscard]] std::vector<int> naturalWidths() const;
  void printRow(Console& console, const std::vector<Cell>& row, const std::vector<int>& widths) const;
  void printHeader(Console& console, const std::vector<int>& widths) const;

  std::vector<Column> columns_;
  std::vector<std::vector<Cell>> rows_;
  std::vector<Section> sections_;
};

/// Widths that fit `available` columns with two blanks between neighbours; 0 for a column that left.
[[nodiscard]] std::vector<int> widthsThatFit(const std::vector<Column>& columns, std::vector<int> natural,
                                             int available);

}  // namespace tallyvane::cli
