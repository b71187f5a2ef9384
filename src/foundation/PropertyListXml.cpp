#include "foundation/PropertyListXml.h"

#include <fmt/format.h>

#include <algorithm>

namespace tallyvane {

std::size_t XmlScanner::line() const { return 1 + static_cast<std::size_t>(std::count(begin_, at_, '\n')); }

void XmlScanner::refuse(std::string_view reason) const {
  throw PropertyListFault{at_ == end_ ? "the file ends too early" : std::string(reason)};
}

void XmlScanner::need(std::string_view mark, std::string_view where) {
  if (!take(mark)) refuse(fmt::format("\"{}\" is missing {}", mark, where));
}

/// Passes one character of a text or comment, whichever XML can carry.
void XmlScanner::passCharacter() {
  const bool ascii = byteOf(*at_) < 0x80;
  const std::size_t length = ascii ? (isXmlCharacter(byteOf(*at_)) ? 1 : 0) : multiByteLength(at_, end_);
  if (length == 0)
    throw PropertyListFault{ascii ? "there is a control character in the text" : "the text is not valid UTF-8"};
  at_ += length;
}

void XmlScanner::skipComments() {
  while (take("<!--")) {
    while (!startsWith("--")) {
      if (at_ == end_) refuse("");
      passCharacter();
    }
    need("-->", "at the end of a comment");
    skipSpace();
  }
}

void XmlScanner::refuseNoTag() const { refuse("there is text where only an element may be"); }

/// Takes what does not simply end in ">" behind the name.
XmlScanner::Tag XmlScanner::finishTag(std::string_view name) {
  if (name.empty())
    refuse(at_ != end_ && *at_ == '/' ? "a value is missing" : "only elements and comments may be here");
  const bool space = skipSpace();
  const bool empty = take("/>");
  if (!empty && !take(">")) refuse(space ? fmt::format("<{:.40}> has an attribute", name) : "a tag is malformed");
  return {name, codeOf(name), empty};
}

void XmlScanner::readSpacedEndTag(std::string_view name) {
  const char* const start = at_;
  if (take("</") && take(name)) {
    skipSpace();
    if (take(">")) return;
  }
  if (at_ != end_) at_ = start;
  refuse(fmt::format("<{:.40}> is not closed where it has to be", name));
}

}  // namespace tallyvane
