// The values of a property list in its XML form.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
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
/// Room made at once for the values of a dictionary; more would let short hostile text take much memory.
constexpr std::size_t mostExpectedValues = 20;
constexpr std::uint64_t keyCode = XmlScanner::codeOf("key");

/// Gives each key that comes more than once its first place and its last value. Sorting keeps the cost down whatever
/// the keys are.
void mergeRepeatedKeys(Dictionary& dictionary) {
  std::vector<std::size_t> order(dictionary.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  const std::span<const std::string> keys = dictionary.keys();
  std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    const int compared = keys[left].compare(keys[right]);
    return compared != 0 ? compared < 0 : left < right;
  });
  const auto same = [&](std::size_t left, std::size_t right) { return keys[left] == keys[right]; };
  if (std::adjacent_find(order.begin(), order.end(), same) == order.end()) return;

  std::vector<const Value*> lastValues(order.size());  // at the first place of each key
  std::size_t first = order.front();
  for (const std::size_t index : order) {
    if (!same(first, index)) first = index;
    lastValues[first] = &dictionary.values()[index];
  }
  Dictionary merged;
  for (std::size_t i = 0; i < lastValues.size(); ++i) {
    if (lastValues[i] != nullptr) merged.append(keys[i], *lastValues[i]);
  }
  dictionary = std::move(merged);
}

/// The keys of the latest dictionary of each depth in this thread: most dictionaries are one of many of a kind, in one
/// file or one after the other.
class LatestKeys {
 public:
  static LatestKeys& ofThisThread() {
    static thread_local LatestKeys keys;
    return keys;
  }

  [[nodiscard]] const SharedKeys& at(int depth) const { return keys_[placeOf(depth)]; }

  /// Only keys that the scanner can compare as they are written, without looking for markup, and not many.
  void note(int depth, const Dictionary& dictionary) {
    SharedKeys& latest = keys_[placeOf(depth)];
    if (dictionary.sharedKeys().isSharedWith(latest) || dictionary.size() > smallDictionary) return;
    const auto keys = dictionary.keys();
    if (std::all_of(keys.begin(), keys.end(), isPlain)) latest = dictionary.sharedKeys();
  }

 private:
  static bool isPlain(const std::string& key) {
    const char* const end = key.data() + key.size();
    return endOfRun(plainTextCharacters, key.data(), end) == end;
  }
  static std::size_t placeOf(int depth) { return static_cast<std::size_t>(depth) % depths; }

  static constexpr std::size_t depths = 8;
  std::array<SharedKeys, depths> keys_;
};

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
    if (tag.empty) return Dictionary();
    Dictionary dictionary(latestKeys_.at(depth));
    for (in_.skipBetween(); !in_.atEndTag(); in_.skipBetween()) {
      const XmlScanner::Tag keyTag = in_.readTag();
      if (keyTag.code != keyCode) in_.refuse(fmt::format("a <key> is missing before <{:.40}>", keyTag.name));
      if (dictionary.empty()) dictionary.reserve(std::min(latestKeys_.at(depth).all().size(), mostExpectedValues));
      const std::string* expected = dictionary.expectedKey();
      if (expected != nullptr && in_.takeText(keyTag, *expected)) {
        dictionary.appendExpected(readNext(depth));
      } else {
        readOther(dictionary, keyTag, depth);
      }
    }
    in_.readEndTag("dict");
    if (dictionary.size() > smallDictionary) mergeRepeatedKeys(dictionary);
    latestKeys_.note(depth, dictionary);
    return dictionary;
  }

  /// A value that stands behind its key.
  Value readNext(int depth) {
    in_.skipBetween();
    return readValue(in_.readTag(), depth + 1);
  }

  void readOther(Dictionary& dictionary, XmlScanner::Tag keyTag, int depth) {
    std::string key = in_.readText(keyTag);
    Value value = readNext(depth);
    Value* const present = dictionary.size() <= smallDictionary ? dictionary.find(key) : nullptr;
    if (present != nullptr) {
      *present = std::move(value);
    } else {
      dictionary.append(std::move(key), std::move(value));
    }
  }

  XmlScanner& in_;
  int maximumDepth_;
  LatestKeys& latestKeys_ = LatestKeys::ofThisThread();
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
