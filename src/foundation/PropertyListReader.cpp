// The values of a property list in its XML form.
#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "foundation/PropertyList.h"
#include "foundation/PropertyListForms.h"
#include "foundation/PropertyListScalars.h"
#include "foundation/PropertyListXml.h"

namespace tallyvane {
namespace {

/// Up to here looking at every key for one of the same name is the quickest.
constexpr std::size_t smallDictionary = 32;
/// Room made at once for the entries of a dictionary; more would let short hostile text take much memory.
constexpr std::size_t mostExpectedEntries = 8;

constexpr std::uint64_t keyCode = XmlScanner::codeOf("key");

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
  Reader(XmlScanner& in, int maximumDepth) : in_(in), maximumDepth_(maximumDepth) {}

  Value readDocument() {
    in_.skipPrologue();
    in_.skipBetween();
    Value root = readValue(in_.readTag(), 1);
    in_.skipBetween();
    if (!in_.atEndTag()) in_.refuse("there is more than one value in the plist element");
    in_.readEndTag("plist");
    in_.skipBetween();
    if (!in_.atEnd()) in_.refuse("something follows the end of the property list");
    return root;
  }

 private:
  Value readValue(XmlScanner::Tag tag, int depth) {
    switch (tag.code) {
      case XmlScanner::codeOf("string"):
        return in_.readText(tag);
      case XmlScanner::codeOf("real"):
        return realOfText(in_.readPlainText(tag));
      case XmlScanner::codeOf("integer"):
        return integerOfText(in_.readPlainText(tag));
      case XmlScanner::codeOf("date"):
        return dateOfText(in_.readPlainText(tag));
      case XmlScanner::codeOf("data"):
        return Data{dataOfBase64(in_.readPlainText(tag))};
      case XmlScanner::codeOf("true"):
      case XmlScanner::codeOf("false"):
        return readBoolean(tag);
      case XmlScanner::codeOf("array"):
        return readArray(tag, depth);
      case XmlScanner::codeOf("dict"):
        return readDictionary(tag, depth);
      case keyCode:
        in_.refuse("a <key> may only be in a <dict>");
      default:
        in_.refuse(fmt::format("<{:.40}> is not an element of a property list", tag.name));
    }
  }

  Value readBoolean(XmlScanner::Tag tag) {
    if (!tag.empty) in_.readEndTag(tag.name);
    return tag.code == XmlScanner::codeOf("true");
  }

  void checkDepth(int depth) const {
    if (depth > maximumDepth_) in_.refuse(fmt::format("more than {} levels are nested", maximumDepth_));
  }

  Value readArray(XmlScanner::Tag tag, int depth) {
    checkDepth(depth);
    Array array;
    if (tag.empty) return array;
    for (in_.skipBetween(); !in_.atEndTag(); in_.skipBetween()) array.push_back(readValue(in_.readTag(), depth + 1));
    in_.readEndTag("array");
    return array;
  }

  Value readDictionary(XmlScanner::Tag tag, int depth) {
    checkDepth(depth);
    Dictionary dictionary;
    if (tag.empty) return dictionary;
    for (in_.skipBetween(); !in_.atEndTag(); in_.skipBetween()) {
      if (dictionary.empty()) dictionary.reserve(expectedEntries_);
      const XmlScanner::Tag keyTag = in_.readTag();
      if (keyTag.code != keyCode) in_.refuse(fmt::format("a <key> is missing before <{:.40}>", keyTag.name));
      std::string key = in_.readText(keyTag);
      in_.skipBetween();
      Value value = readValue(in_.readTag(), depth + 1);
      Value* const present = dictionary.size() <= smallDictionary ? dictionary.find(key) : nullptr;
      if (present != nullptr) {
        *present = std::move(value);
      } else {
        dictionary.append(std::move(key), std::move(value));
      }
    }
    in_.readEndTag("dict");
    if (dictionary.size() > smallDictionary) mergeRepeatedKeys(dictionary);
    expectedEntries_ = std::clamp<std::size_t>(dictionary.size(), 1, mostExpectedEntries);
    return dictionary;
  }

  XmlScanner& in_;
  int maximumDepth_;
  std::size_t expectedEntries_ = mostExpectedEntries;  ///< most dictionaries are one of many of a kind
};

}  // namespace

Value readXmlPropertyList(std::string_view text, int maximumDepth) {
  XmlScanner scanner(text);
  try {
    return Reader(scanner, maximumDepth).readDocument();
  } catch (const PropertyListFault& fault) {
    throw PropertyListFault{fmt::format("line {}: {}", scanner.line(), fault.reason)};
  }
}

}  // namespace tallyvane
