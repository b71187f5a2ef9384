#include "cli/terminal/DisplayText.h"

#include <fmt/format.h>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>

#include "foundation/IcuSupport.h"

namespace tallyvane::cli {

namespace {

constexpr UChar32 replacement = 0xFFFD;
constexpr UChar32 emojiStyle = 0xFE0F;

bool isLineBreak(UChar32 c) { return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029; }

/// Embeddings, overrides and isolates of the writing direction could show a text in another order than it has.
bool reorders(UChar32 c) { return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069); }

UChar32 safe(UChar32 c, bool keepsLines) {
  if (isLineBreak(c)) return keepsLines ? '\n' : ' ';
  if (c == '\t') return ' ';
  return u_charType(c) == U_CONTROL_CHAR || u_charType(c) == U_SURROGATE || reorders(c) ? replacement : c;
}

std::string madeSafe(std::string_view text, bool keepsLines) {
  const icu::UnicodeString source = unicodeOf(text);
  icu::UnicodeString result;
  for (std::int32_t at = 0; at < source.length(); at = source.moveIndex32(at, 1)) {
    result.append(safe(source.char32At(at), keepsLines));
  }
  return utf8Of(result);
}

/// Columns of one code point on its own.
int widthOf(UChar32 c) {
  const int type = u_charType(c);
  const bool joinsBefore = type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR;
  const bool joiningJamo = c >= 0x1160 && c <= 0x11FF;
  if (joinsBefore || joiningJamo) return 0;
  const int eastAsian = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
  const bool wide = eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH;
  return wide || u_hasBinaryProperty(c, UCHAR_EMOJI_PRESENTATION) ? 2 : 1;
}

/// Columns of one character as a reader sees it: that of its widest part, two when it asks for emoji style.
int widthOfCluster(const icu::UnicodeString& text, std::int32_t from, std::int32_t to) {
  int width = 0;
  for (std::int32_t at = from; at < to; at = text.moveIndex32(at, 1)) {
    const UChar32 c = text.char32At(at);
    width = std::max(width, c == emojiStyle ? 2 : widthOf(c));
  }
  return width;
}

icu::BreakIterator& clusters() {
  thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::BreakIterator>(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  }();
  return *iterator;
}

/// Calls visit(end of the character, its columns) for each until that says to stop.
template <typename Visit>
void forEachCluster(const icu::UnicodeString& text, Visit visit) {
  icu::BreakIterator& iterator = clusters();
  iterator.setText(text);
  std::int32_t from = iterator.first();
  for (std::int32_t to = iterator.next(); to != icu::BreakIterator::DONE; to = iterator.next()) {
    if (!visit(to, widthOfCluster(text, from, to))) return;
    from = to;
  }
}

/// How many bytes of the text fit the width.
std::size_t lengthWithin(std::string_view text, int width) {
  const icu::UnicodeString source = unicodeOf(text);
  std::int32_t end = 0;
  forEachCluster(source, [&](std::int32_t to, int columns) {
    if (columns > width) return false;
    width -= columns;
    end = to;
    return true;
  });
  return utf8Of(source.tempSubString(0, end)).size();
}

/// Appends one line as it is when it fits, else its words on as many lines as they need.
void wrapLine(std::string_view text, int room, std::vector<std::string>& lines) {
  while (displayWidth(text) > room) {
    std::size_t end = lengthWithin(text, room);
    const std::size_t blank = text.substr(0, end + 1).rfind(' ');
    if (blank != std::string_view::npos && blank > 0) end = blank;
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  }
  lines.emplace_back(text);
}

}  // namespace

std::string printable(std::string_view text) { return madeSafe(text, false); }
std::string printableLines(std::string_view text) { return madeSafe(text, true); }

std::string escapedForTerminal(std::string_view json) {
  // All that is unsafe lies below U+10000. Control characters below 0x20 are escaped in JSON texts already.
  const icu::UnicodeString source = unicodeOf(json);
  std::string result;
  for (std::int32_t at = 0; at < source.length(); at = source.moveIndex32(at, 1)) {
    const UChar32 c = source.char32At(at);
    if (c < 0x7F || safe(c, false) == c) {
      icu::UnicodeString(c).toUTF8String(result);
    } else {
      result += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(c));
    }
  }
  return result;
}

int displayWidth(std::string_view text) {
  int total = 0;
  forEachCluster(unicodeOf(text), [&](std::int32_t, int width) {
    total += width;
    return true;
  });
  return total;
}

std::string fitted(std::string_view text, int width) {
  if (width <= 0) return "";
  if (displayWidth(text) <= width) return std::string(text);
  return std::string(text.substr(0, lengthWithin(text, width - 1))) + "…";
}

std::vector<std::string> wrapped(std::string_view text, int width) {
  const int room = std::max(width, 2);  // the widest character has that much
  std::vector<std::string> lines;
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t end = std::min(text.find('\n', from), text.size());
    wrapLine(text.substr(from, end - from), room, lines);
    from = end + 1;
  }
  return lines;
}

std::string padded(std::string_view text, int width) {
  return std::string(text) + std::string(static_cast<std::size_t>(std::max(0, width - displayWidth(text))), ' ');
}

}  // namespace tallyvane::cli
