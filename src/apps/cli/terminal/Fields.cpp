#include "cli/terminal/Fields.h"

#include <algorithm>

#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

/// Label and text; what is too long goes on in the next lines, under the text.
void printField(Console& console, const Field& field, int labelWidth) {
  const std::string label = padded(translated(field.label.shown), labelWidth);
  std::string lead = console.painted(label, Colour::dim).append("  ").append(console.directionMark());
  const int room = console.terminal().width - labelWidth - 2;
  for (const std::string& line : wrapped(printableLines(field.text.shown), room)) {
    console.line(lead + console.painted(line, field.text.colour));
    lead = std::string(static_cast<std::size_t>(labelWidth) + 2, ' ');
  }
}

}  // namespace

void printFields(Console& console, const std::vector<Field>& fields) {
  int labelWidth = 0;
  for (const Field& field : fields) labelWidth = std::max(labelWidth, displayWidth(translated(field.label.shown)));
  for (const Field& field : fields) {
    if (!console.interactive()) {
      console.line(field.label.plain + "\t" + printable(field.text.plain));
    } else if (!field.text.shown.empty()) {
      printField(console, field, labelWidth);
    }
  }
}

void printParagraph(Console& console, const std::string& text) {
  if (!console.interactive()) return console.line(printable(text));
  for (const std::string& line : wrapped(printableLines(text), console.terminal().width)) console.line(line);
}

}  // namespace tallyvane::cli
