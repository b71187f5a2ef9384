// What is said of one thing, a labelled line each.
#pragma once

#include <string>
#include <vector>

#include "cli/terminal/Console.h"
#include "cli/terminal/Table.h"

namespace tallyvane::cli {

struct Field {
  Cell label;  ///< in English; a person sees it in their language
  Cell text;
};

/// On a terminal: label and text, empty ones left out, long ones wrapped under themselves. In a pipe: label, tab, text,
/// a line each.
void printFields(Console& console, const std::vector<Field>& fields);

/// Sentences, wrapped between words on a terminal.
void printParagraph(Console& console, const std::string& text);

}  // namespace tallyvane::cli
