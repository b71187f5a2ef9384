#include "cli/terminal/Table.h"

#include <algorithm>
#include <numeric>

#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

constexpr int gap = 2;
constexpr int barelyReadable = 6;  ///< columns that are cut at all are cut so far before the others suffer

/// Columns that the widths take with the gaps between those that are there.
int totalOf(const std::vector<int>& widths) {
  const auto present = std::count_if(widths.begin(), widths.end(), [](int width) { return width > 0; });
  const int gaps = gap * std::max(0, static_cast<int>(present) - 1);
  return std::accumulate(widths.begin(), widths.end(), gaps);
}

/// Takes columns of width from the widest that may give, until they fit or none may.
template <typename Narrowest>
void cutUntilFits(std::vector<int>& widths, int available, Narrowest narrowest) {
  while (totalOf(widths) > available) {
    int* widest = nullptr;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (widths[i] > narrowest(i) && (widest == nullptr || widths[i] > *widest)) widest = &widths[i];
    }
    if (widest == nullptr) return;
    --*widest;
  }
}

/// The column that leaves next, or none.
int* nextToLeave(const std::vector<Column>& columns, std::vector<int>& widths) {
  int* next = nullptr;
  int highest = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (widths[i] == 0 || columns[i].leavesAt <= highest) continue;
    highest = columns[i].leavesAt;
    next = &widths[i];
  }
  return next;
}

}  // namespace

std::vector<int> widthsThatFit(const std::vector<Column>& columns, std::vector<int> natural, int available) {
  std::vector<int> widths = natural;
  const auto mayBeCutTo = [&](int least, std::size_t i) {
    return columns[i].narrowest > 0 ? std::min(widths[i], least) : widths[i];
  };
  const auto downToNarrowest = [&](std::size_t i) { return mayBeCutTo(columns[i].narrowest, i); };
  cutUntilFits(widths, available, downToNarrowest);
  while (totalOf(widths) > available) {
    int* leaving = nextToLeave(columns, natural);
    if (leaving == nullptr) break;
    *leaving = 0;
    widths = natural;
    cutUntilFits(widths, available, downToNarrowest);
  }
  cutUntilFits(widths, available, [&](std::size_t i) { return mayBeCutTo(barelyReadable, i); });
  cutUntilFits(widths, available, [&](std::size_t i) { return std::min(widths[i], 1); });
  return widths;
}

void Table::add(std::vector<Cell> cells) {
  for (Cell& cell : cells) {
    cell.shown = printable(cell.shown);
    cell.plain = printable(cell.plain);
  }
  rows_.push_back(std::move(cells));
}

void Table::print(Console& console) const {
  if (console.interactive()) {
    printForPeople(console);
  } else {
    printForPrograms(console);
  }
}

std::vector<int> Table::naturalWidths() const {
  std::vector<int> widths;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    int width = displayWidth(translated(columns_[i].title));
    for (const auto& row : rows_) width = std::max(width, displayWidth(row[i].shown));
    widths.push_back(std::max(width, 1));
  }
  return widths;
}

void Table::printRow(Console& console, const std::vector<Cell>& row, const std::vector<int>& widths) const {
  std::string line;
  std::string blanks;  // printed only before more text, so that no line ends in blanks
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (widths[i] == 0) continue;
    const std::string text = fitted(row[i].shown, widths[i]);
    const std::string padding(static_cast<std::size_t>(widths[i] - displayWidth(text)), ' ');
    if (columns_[i].alignRight) blanks += padding;
    if (!text.empty()) {
      line += blanks + console.painted(text, row[i].colour);
      blanks.clear();
    }
    if (!columns_[i].alignRight) blanks += padding;
    blanks += std::string(gap, ' ').append(console.directionMark());
  }
  console.line(line);
}

void Table::printHeader(Console& console, const std::vector<int>& widths) const {
  std::vector<Cell> titles;
  for (const Column& column : columns_) titles.emplace_back(translated(column.title), "", Colour::dim);
  printRow(console, titles, widths);
}

void Table::printForPeople(Console& console) const {
  const std::vector<int> widths = widthsThatFit(columns_, naturalWidths(), console.terminal().width);
  printHeader(console, widths);
  std::size_t section = 0;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    for (; section < sections_.size() && sections_[section].firstRow <= i; ++section) {
      if (i > 0) console.line();
      console.line(
          console.painted(fitted(translated(sections_[section].title), console.terminal().width), Colour::bold));
    }
    printRow(console, rows_[i], widths);
  }
}

void Table::printForPrograms(Console& console) const {
  std::size_t section = 0;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    while (section + 1 < sections_.size() && sections_[section + 1].firstRow <= i) ++section;
    std::string line = sections_.empty() ? "" : sections_[section].title + "\t";
    for (const Cell& cell : rows_[i]) line += (&cell == &rows_[i].front() ? "" : "\t") + cell.plain;
    console.line(line);
  }
}

}  // namespace tallyvane::cli
