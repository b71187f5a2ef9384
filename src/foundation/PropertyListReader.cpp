// Reads the XML form in one pass, straight into values.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/PropertyList.h"
#include "foundation/PropertyListCharacters.h"
#include "foundation/PropertyListForms.h"
#include "foundation/PropertyListScalars.h"

namespace tallyvane {
namespace {

/// What stands in a text for itself without a closer look: all of ASCII but markup, control characters, the carriage
/// return (a line end, read as a line feed) and the end of "]]>", which may not stand in a text.
constexpr std::array<bool, 256> plainCharacters = [] {
  std::array<bool, 256> plain{};
  for (std::size_t code = 0x20; code < 0x80; ++code) plain[code] = true;
  plain['\t'] = plain['\n'] = true;
  plain['<'] = plain['&'] = plain['>'] = false;
  return plain;
}();

constexpr std::array<std::pair<std::string_view, char>, 5> entities{
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

bool isNameCharacter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '-' || character == '_' || character == '.' ||
         character == ':';
}

/// Up to here looking at every key for one of the same name is the quickest.
constexpr std::size_t smallDictionary = 16;

/// Gives each key that comes more than once its first place and its last value. Sorting keeps the cost down whatever
/// the keys are.
void mergeRepeatedKeys(Dictionary& dictionary) {
  std::vector<std::size_t> order(dictionary.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  const Dictionary::Entry* const entries = dictionary.begin();
  std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    const int compared = entries[left].first.compare(entries[right].first);
    return compared != 0 ? compared < 0 : left < right;
  });
  const auto same = [&](std::size_t left, std::size_t right) { return entries[left].first == entries[right].first; };
  if (std::adjacent_find(order.begin(), order.end(), same) == order.end()) return;

  std::vector<const Value*> lastValues(order.size());  // at the first place of each key
  std::size_t first = order.front();
  for (const std::size_t index : order) {
    if (!same(first, index)) first = index;
    lastValues[first] = &entries[index].second;
  }
  Dictionary merged;
  for (std::size_t i = 0; i < lastValues.size(); ++i) {
    if (lastValues[i] != nullptr) merged.append(entries[i].first, *lastValues[i]);
  }
  dictionary = std::move(merged);
}

class Reader {
 public:
  explicit Reader(std::string_view text) : begin_(text.data()), at_(begin_), end_(begin_ + text.size()) {}

  Value readDocument() {
    take("\xEF\xBB\xBF");
    skipDeclaration();
    skipBetween();
    skipDocumentType();
    skipBetween();
    openPropertyList();
    skipBetween();
    Value root = readValue(readTag(), 1);
    skipBetween();
    if (!startsWith("</")) refuse("there is more than one value in the plist element");
    close("plist");
    skipBetween();
    if (at_ != end_) refuse("something follows the end of the property list");
    return root;
  }

  [[nodiscard]] std::string line() const { return fmt::format("line {}: ", 1 + std::count(begin_, at_, '\n')); }

 private:
  /// A start tag, behind which the reader stands.
  struct Tag {
    std::string_view name;
    bool empty;  ///< has no content and no end tag
  };

  [[noreturn]] void refuse(std::string reason) const {
    throw PropertyListFault{at_ == end_ ? "the file ends too early" : std::move(reason)};
  }

  // 1 Characters and marks

  [[nodiscard]] bool startsWith(std::string_view mark) const {
    return static_cast<std::size_t>(end_ - at_) >= mark.size() && std::memcmp(at_, mark.data(), mark.size()) == 0;
  }

  bool take(std::string_view mark) {
    if (!startsWith(mark)) return false;
    at_ += mark.size();
    return true;
  }

  void need(std::string_view mark, std::string_view where) {
    if (!take(mark)) refuse(fmt::format("\"{}\" is missing {}", mark, where));
  }

  /// Whether there was any.
  bool skipSpace() {
    const char* const start = at_;
    while (at_ != end_ && isXmlSpace(*at_)) ++at_;
    return at_ != start;
  }

  /// Passes one character that is not plain; its place is where an error is reported.
  void passCharacter() {
    const std::size_t length = byteOf(*at_) >= 0x80 ? multiByteLength(at_, end_) : isXmlCharacter(byteOf(*at_)) ? 1 : 0;
    if (length == 0) {
      throw PropertyListFault{byteOf(*at_) >= 0x80 ? "the text is not valid UTF-8"
                                                   : "there is a control character in the text"};
    }
    at_ += length;
  }

  void skipBetween() {
    skipSpace();
    while (take("<!--")) {
      while (!startsWith("--")) {
        if (at_ == end_) refuse("");
        passCharacter();
      }
      need("-->", "at the end of a comment");
      skipSpace();
    }
  }

  // 2 What comes before the value

  /// The value of ` name="value"`, if that is what follows.
  std::optional<std::string_view> takeAttribute(std::string_view name) {
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

  std::string_view readQuoted() {
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

  void skipDeclaration() {
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
  void skipDocumentType() {
    if (!take("<!DOCTYPE")) return;
    const bool named = skipSpace() && take("plist");
    if (!named || at_ == end_ || isNameCharacter(*at_)) refuse("the document type is not that of a property list");
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

  void openPropertyList() {
    if (!take("<plist") || (at_ != end_ && isNameCharacter(*at_))) refuse("this is not a property list");
    const auto version = takeAttribute("version");
    if (version && version != "1.0") refuse("only version 1.0 of property lists is read");
    skipSpace();
    if (startsWith("/>")) refuse("the plist element has no value");
    need(">", "at the end of the plist tag");
  }

  // 3 Elements

  Tag readTag() {
    if (startsWith("</")) refuse("a value is missing");
    if (at_ == end_ || *at_ != '<') refuse("there is text where only an element may be");
    const char* const start = ++at_;
    while (at_ != end_ && isNameCharacter(*at_)) ++at_;
    const std::string_view name(start, static_cast<std::size_t>(at_ - start));
    if (name.empty()) refuse("only elements and comments may be here");
    const bool space = skipSpace();
    const bool empty = take("/>");
    if (!empty && !take(">")) refuse(space ? fmt::format("<{:.40}> has an attribute", name) : "a tag is malformed");
    return {name, empty};
  }

  void close(std::string_view name) {
    const char* const start = at_;
    if (take("</") && take(name)) {
      skipSpace();
      if (take(">")) return;
    }
    if (at_ != end_) at_ = start;
    refuse(fmt::format("<{:.40}> is not closed where it has to be", name));
  }

  Value readValue(Tag tag, int depth) {
    const std::string_view name = tag.name;
    switch (name.front()) {
      case 's':
        if (name == "string") return readText(tag);
        break;
      case 'i':
        if (name == "integer") return integerOfText(readPlainText(tag));
        break;
      case 'r':
        if (name == "real") return realOfText(readPlainText(tag));
        break;
      case 'd':
        if (name == "dict") return readDictionary(tag, depth);
        if (name == "date") return dateOfText(readPlainText(tag));
        if (name == "data") return Data{dataOfBase64(readPlainText(tag))};
        break;
      case 'a':
        if (name == "array") return readArray(tag, depth);
        break;
      case 't':
      case 'f':
        if (name == "true" || name == "false") return readBoolean(tag);
        break;
      default:
        break;
    }
    refuse(name == "key" ? "a <key> may only be in a <dict>"
                         : fmt::format("<{:.40}> is not an element of a property list", name));
  }

  Value readBoolean(Tag tag) {
    if (!tag.empty) close(tag.name);
    return tag.name == "true";
  }

  void checkDepth(int depth) const {
    if (depth > maximumPropertyListDepth)
      refuse(fmt::format("more than {} levels are nested", maximumPropertyListDepth));
  }

  Value readArray(Tag tag, int depth) {
    checkDepth(depth);
    Array array;
    if (tag.empty) return array;
    for (skipBetween(); !startsWith("</"); skipBetween()) array.push_back(readValue(readTag(), depth + 1));
    close("array");
    return array;
  }

  Value readDictionary(Tag tag, int depth) {
    checkDepth(depth);
    Dictionary dictionary;
    if (tag.empty) return dictionary;
    dictionary.reserve(8);
    for (skipBetween(); !startsWith("</"); skipBetween()) {
      const Tag keyTag = readTag();
      if (keyTag.name != "key") refuse(fmt::format("a <key> is missing before <{:.40}>", keyTag.name));
      std::string key = readText(keyTag);
      skipBetween();
      Value value = readValue(readTag(), depth + 1);
      Value* const present = dictionary.size() <= smallDictionary ? dictionary.find(key) : nullptr;
      if (present != nullptr) {
        *present = std::move(value);
      } else {
        dictionary.append(std::move(key), std::move(value));
      }
    }
    close("dict");
    if (dictionary.size() > smallDictionary) mergeRepeatedKeys(dictionary);
    return dictionary;
  }

  // 4 Texts

  /// The content of an element that holds no markup of any kind.
  std::string_view readPlainText(Tag tag) {
    if (tag.empty) return {};
    const char* const start = at_;
    const void* const mark = std::memchr(at_, '<', static_cast<std::size_t>(end_ - at_));
    if (mark == nullptr) at_ = end_;
    if (mark == nullptr) refuse("");
    at_ = static_cast<const char*>(mark);
    const std::string_view text(start, static_cast<std::size_t>(at_ - start));
    close(tag.name);
    return text;
  }

  std::string readText(Tag tag) {
    if (tag.empty) return {};
    const char* run = at_;  // what is not in the text yet
    std::string text;
    for (;;) {
      while (at_ != end_ && plainCharacters[byteOf(*at_)]) ++at_;
      if (at_ == end_) refuse("");
      if (byteOf(*at_) >= 0x80 || *at_ == '>') {
        if (*at_ == '>' && at_ - run >= 2 && at_[-1] == ']' && at_[-2] == ']') refuse("\"]]>\" may not be in a text");
        passCharacter();
        continue;
      }
      text.append(run, at_);
      if (startsWith("</")) break;
      readMarkup(text);
      run = at_;
    }
    close(tag.name);
    return text;
  }

  /// What is in a text and does not stand for itself.
  void readMarkup(std::string& text) {
    if (*at_ == '&') {
      readReference(text);
    } else if (take("<![CDATA[")) {
      readCharacterData(text);
    } else if (*at_ == '<') {
      refuse("a text may not have elements or comments in it");
    } else {
      readLineEnd(text);
    }
  }

  void readLineEnd(std::string& text) {
    const bool carriageReturn = *at_ == '\r';
    passCharacter();
    if (!carriageReturn || at_ == end_ || *at_ != '\n') text.push_back('\n');
  }

  void readCharacterData(std::string& text) {
    while (!startsWith("]]>")) {
      if (at_ == end_) refuse("");
      if (*at_ == '\r') {
        readLineEnd(text);
        continue;
      }
      const char* const start = at_;
      passCharacter();
      text.append(start, at_);
    }
    take("]]>");
  }

  void readReference(std::string& text) {
    constexpr std::size_t longest = 12;
    const auto left = std::min(longest, static_cast<std::size_t>(end_ - at_));
    const std::string_view ahead(at_ + 1, left - 1);
    const std::size_t length = ahead.find(';');
    if (length == std::string_view::npos) refuse("\"&\" does not begin a reference; it is written \"&amp;\"");
    const std::string_view name = ahead.substr(0, length);
    const auto* const entity =
        std::find_if(entities.begin(), entities.end(), [&](const auto& known) { return known.first == name; });
    if (entity != entities.end()) {
      text.push_back(entity->second);
    } else if (name.starts_with('#')) {
      appendUtf8(text, characterOf(name.substr(1)));
    } else {
      refuse("only the five entities of XML are known");
    }
    at_ += length + 2;
  }

  [[nodiscard]] std::uint32_t characterOf(std::string_view number) const {
    const bool hexadecimal = number.starts_with('x');
    if (hexadecimal) number.remove_prefix(1);
    std::uint32_t code = 0;
    const char* const numberEnd = number.data() + number.size();
    const auto [end, error] = std::from_chars(number.data(), numberEnd, code, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != numberEnd || !isXmlCharacter(code))
      refuse("a reference names no character that may be in a text");
    return code;
  }

  const char* const begin_;
  const char* at_;
  const char* const end_;
};

}  // namespace

Value readXmlPropertyList(std::string_view text) {
  Reader reader(text);
  try {
    return reader.readDocument();
  } catch (const PropertyListFault& fault) {
    throw PropertyListFault{reader.line().append(fault.reason)};
  }
}

}  // namespace tallyvane
