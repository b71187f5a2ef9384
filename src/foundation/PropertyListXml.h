// The XML that a property list is written in: marks, tags and texts, checked as they are passed. Private to
// PropertyList*.cpp. What is inline here runs for every element of every file.
//
//   1 Position and marks   PropertyListXml.cpp
//   2 What precedes the value   PropertyListXmlPrologue.cpp
//   3 Tags                 PropertyListXml.cpp
//   4 Texts                PropertyListXmlText.cpp
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/PropertyListCharacters.h"

namespace tallyvane {

/// Stands at a place in a text, which it refers to; each operation passes what it takes and throws a PropertyListFault
/// at anything else.
class XmlScanner {
 public:
  explicit XmlScanner(std::string_view text) : begin_(text.data()), at_(begin_), end_(begin_ + text.size()) {}

  // 1 Position and marks

  [[nodiscard]] bool atEnd() const { return at_ == end_; }
  /// Counted from 1; worked out anew at every call.
  [[nodiscard]] std::size_t line() const;
  /// At the end of the text the reason is that it ends there.
  [[noreturn]] void refuse(std::string_view reason) const;

  [[nodiscard]] bool startsWith(std::string_view mark) const {
    return static_cast<std::size_t>(end_ - at_) >= mark.size() && std::memcmp(at_, mark.data(), mark.size()) == 0;
  }
  /// White space and comments.
  void skipBetween() {
    skipSpace();
    if (startsWith("<!--")) skipComments();
  }

  // 2 What precedes the value

  /// Byte-order mark, declaration, document type and the start tag of the plist element. The document type is passed
  /// over, never fetched; one that declares something is not taken.
  void skipPrologue();

  // 3 Tags

  /// A start tag, behind which the scanner stands. The name is not empty.
  struct Tag {
    std::string_view name;
    std::uint64_t code;  ///< codeOf(name)
    bool empty;          ///< has no content and no end tag
  };

  /// The last eight letters in one number, for a quick switch. Names of up to seven letters share it with no other
  /// name.
  [[nodiscard]] static constexpr std::uint64_t codeOf(std::string_view name) {
    std::uint64_t code = 0;
    for (const char letter : name) code = code << 8 | byteOf(letter);
    return code;
  }

  Tag readTag() {
    if (at_ == end_ || *at_ != '<') refuseNoTag();
    const char* const start = ++at_;
    const char* at = start;
    std::uint64_t code = 0;
    for (; at != end_ && xmlNameCharacters.has(*at); ++at) code = code << 8 | byteOf(*at);
    at_ = at;
    const std::string_view name(start, static_cast<std::size_t>(at_ - start));
    if (at_ == end_ || *at_ != '>' || name.empty()) return finishTag(name);
    ++at_;
    return {name, code, false};
  }

  [[nodiscard]] bool atEndTag() const { return startsWith("</"); }

  void readEndTag(std::string_view name) {
    const std::size_t length = name.size() + 3;
    if (static_cast<std::size_t>(end_ - at_) >= length && at_[0] == '<' && at_[1] == '/' && at_[length - 1] == '>' &&
        std::memcmp(at_ + 2, name.data(), name.size()) == 0) {
      at_ += length;
    } else {
      readSpacedEndTag(name);
    }
  }

  // 4 Texts: the content of an element whose start tag was read, through its end tag.

  /// Passes exactly this text, in which no character needs markup; not, and nothing, when there is another.
  bool takeText(Tag tag, std::string_view text) {
    const char* const start = at_;
    if (tag.empty || !take(text)) return false;
    if (startsWith("</")) {
      readEndTag(tag.name);
      return true;
    }
    at_ = start;
    return false;
  }
  /// One that holds no markup of any kind.
  std::string_view readPlainText(Tag tag);
  /// With references and character data resolved and line ends as line feeds.
  std::string readText(Tag tag);

 private:
  bool take(std::string_view mark) {
    if (!startsWith(mark)) return false;
    at_ += mark.size();
    return true;
  }
  void need(std::string_view mark, std::string_view where);

  /// Whether there was any.
  bool skipSpace() {
    const char* const start = at_;
    at_ = endOfRun(xmlSpaces, start, end_);
    return at_ != start;
  }
  void skipComments();
  void passCharacter();

  void skipDeclaration();
  void skipDocumentType();
  void openPropertyList();
  std::optional<std::string_view> takeAttribute(std::string_view name);
  std::string_view readQuoted();

  [[noreturn]] void refuseNoTag() const;
  Tag finishTag(std::string_view name);
  void readSpacedEndTag(std::string_view name);

  void readMarkup(std::string& text);
  void readLineEnd(std::string& text);
  void readCharacterData(std::string& text);
  void readReference(std::string& text);
  [[nodiscard]] std::uint32_t characterOf(std::string_view number) const;

  const char* begin_;
  const char* at_;
  const char* end_;
};

}  // namespace tallyvane
