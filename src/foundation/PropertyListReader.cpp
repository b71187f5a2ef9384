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
  explicit Reader(XmlScanner& in) : in_(in) {}

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
    const std::string_view name = tag.name;
    switch (name.front()) {
      case 's':
        if (name == "string") return in_.readText(tag);
        break;
      case 'i':
        if (name == "integer") return integerOfText(in_.readPlainText(tag));
        break;
      case 'r':
        if (name == "real") return realOfText(in_.readPlainText(tag));
        break;
      case 'd':
        if (name == "dict") return readDictionary(tag, depth);
        if (name == "date") return dateOfText(in_.readPlainText(tag));
        if (name == "data") return Data{dataOfBase64(in_.readPlainText(tag))};
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
    in_.refuse(name == "key" ? "a <key> may only be in a <dict>"
                             : fmt::format("<{:.40}> is not an element of a property list", name));
  }

  Value readBoolean(XmlScanner::Tag tag) {
    if (!tag.empty) in_.readEndTag(tag.name);
    return tag.name == "true";
  }

  void checkDepth(int depth) const {
    if (depth > maximumPropertyListDepth)
      in_.refuse(fmt::format("more than {} levels are nested", maximumPropertyListDepth));
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
    dictionary.reserve(8);
    for (in_.skipBetween(); !in_.atEndTag(); in_.skipBetween()) {
      const XmlScanner::Tag keyTag = in_.readTag();
      if (keyTag.name != "key") in_.refuse(fmt::format("a <key> is missing before <{:.40}>", keyTag.name));
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
    return dictionary;
  }

  XmlScanner& in_;
};

}  // namespace

Value readXmlPropertyList(std::string_view text) {
  XmlScanner scanner(text);
  try {
    return Reader(scanner).readDocument();
  } catch (const PropertyListFault& fault) {
    throw PropertyListFault{fmt::format("line {}: {}", scanner.line(), fault.reason)};
  }
}

}  // namespace tallyvane
