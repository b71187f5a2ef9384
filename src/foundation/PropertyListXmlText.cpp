#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "foundation/PropertyListXml.h"

namespace tallyvane {
namespace {

constexpr std::array<std::pair<std::string_view, char>, 5> entities{
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

}  // namespace

/// The content of an element that holds no markup of any kind.
std::string_view XmlScanner::readPlainText(Tag tag) {
  if (tag.empty) return {};
  const char* const start = at_;
  const void* const mark = std::memchr(at_, '<', static_cast<std::size_t>(end_ - at_));
  if (mark == nullptr) at_ = end_;
  if (mark == nullptr) refuse("");
  at_ = static_cast<const char*>(mark);
  const std::string_view text(start, static_cast<std::size_t>(at_ - start));
  readEndTag(tag.name);
  return text;
}

std::string XmlScanner::readText(Tag tag) {
  if (tag.empty) return {};
  const char* run = at_;  // what is not in the text yet
  std::string text;
  for (;;) {
    at_ = endOfRun(plainTextCharacters, at_, end_);
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
  readEndTag(tag.name);
  return text;
}

/// What is in a text and does not stand for itself.
void XmlScanner::readMarkup(std::string& text) {
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

void XmlScanner::readLineEnd(std::string& text) {
  const bool carriageReturn = *at_ == '\r';
  passCharacter();
  if (!carriageReturn || at_ == end_ || *at_ != '\n') text.push_back('\n');
}

void XmlScanner::readCharacterData(std::string& text) {
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

void XmlScanner::readReference(std::string& text) {
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

std::uint32_t XmlScanner::characterOf(std::string_view number) const {
  const bool hexadecimal = number.starts_with('x');
  if (hexadecimal) number.remove_prefix(1);
  std::uint32_t code = 0;
  const char* const numberEnd = number.data() + number.size();
  const auto [end, error] = std::from_chars(number.data(), numberEnd, code, hexadecimal ? 16 : 10);
  if (error != std::errc() || end != numberEnd || !isXmlCharacter(code))
    refuse("a reference names no character that may be in a text");
  return code;
}

}  // namespace tallyvane
