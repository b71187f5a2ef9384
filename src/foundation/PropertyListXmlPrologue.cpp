#include <fmt/format.h>

#include "foundation/PropertyListXml.h"

namespace tallyvane {

void XmlScanner::skipPrologue() {
  take("\xEF\xBB\xBF");
  skipDeclaration();
  skipBetween();
  skipDocumentType();
  skipBetween();
  openPropertyList();
}

/// The value of ` name="value"`, if that is what follows.
std::optional<std::string_view> XmlScanner::takeAttribute(std::string_view name) {
  const char* const start = at_;
  if (!skipSpace() || !take(name)) {
    at_ = start;
    return std::nullopt;
  }
  skipSpace();
  need("=", "behind the name of an attribute");
  skipSpace();
  return readQuoted();
}

std::string_view XmlScanner::readQuoted() {
  if (at_ == end_ || (*at_ != '"' && *at_ != '\'')) refuse("a quoted text is missing");
  const char quote = *at_++;
  const char* const start = at_;
  while (at_ != end_ && *at_ != quote) {
    if (*at_ < ' ' || *at_ > '~' || *at_ == '<') refuse("a quoted text has a character that may not be in it");
    ++at_;
  }
  if (at_ == end_) refuse("");
  return {start, static_cast<std::size_t>(at_++ - start)};
}

void XmlScanner::skipDeclaration() {
  if (!take("<?xml")) return;
  if (takeAttribute("version") != "1.0") refuse("only XML 1.0 is read");
  if (const auto encoding = takeAttribute("encoding"); encoding && encoding != "UTF-8" && encoding != "utf-8")
    refuse(fmt::format("the encoding is {:.40}; only UTF-8 is read", *encoding));
  if (const auto standalone = takeAttribute("standalone"); standalone && standalone != "yes" && standalone != "no")
    refuse("the XML declaration is malformed");
  skipSpace();
  need("?>", "at the end of the XML declaration");
}

/// The usual one is passed over, never fetched; one that declares something is not taken.
void XmlScanner::skipDocumentType() {
  if (!take("<!DOCTYPE")) return;
  const bool named = skipSpace() && take("plist");
  if (!named || at_ == end_ || xmlNameCharacters.has(*at_)) refuse("the document type is not that of a property list");
  if (skipSpace() && at_ != end_ && *at_ != '>' && *at_ != '[') {
    if (take("PUBLIC")) {
      skipSpace();
      readQuoted();
    } else {
      need("SYSTEM", "in the document type");
    }
    skipSpace();
    readQuoted();
    skipSpace();
  }
  if (startsWith("[")) refuse("declarations in the document type are not taken");
  need(">", "at the end of the document type");
}

void XmlScanner::openPropertyList() {
  if (!take("<plist") || (at_ != end_ && xmlNameCharacters.has(*at_))) refuse("this is not a property list");
  const auto version = takeAttribute("version");
  if (version && version != "1.0") refuse("only version 1.0 of property lists is read");
  skipSpace();
  if (startsWith("/>")) refuse("the plist element has no value");
  need(">", "at the end of the plist tag");
}

}  // namespace tallyvane
