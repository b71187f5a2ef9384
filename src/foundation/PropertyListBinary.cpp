// Binary property lists are read by libplist. It follows references without counting or looking back, so the structure
// is checked first: nothing outside the file, no cycles, bounded depth, and a bounded size once every shared object is
// written out at each place that refers to it.
#include <fmt/format.h>
#include <plist/plist.h>

#include <algorithm>

#include <cstring>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "foundation/PropertyList.h"
#include "foundation/PropertyListCharacters.h"
#include "foundation/PropertyListForms.h"
#include "foundation/PropertyListScalars.h"

namespace tallyvane {
namespace {

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;
constexpr std::size_t maximumBytes = std::size_t{64} << 20;
/// What an object costs besides its bytes, and what a whole list may cost.
constexpr std::uint64_t objectWeight = 64;
constexpr std::uint64_t maximumWeight = std::uint64_t{128} << 20;
constexpr std::uint64_t maximumObjects = maximumWeight / objectWeight;

struct Object {
  unsigned kind = 0;       ///< the marker's upper half
  std::uint64_t size = 0;  ///< in bytes
  std::size_t content = 0;
  std::uint64_t references = 0;
};

[[noreturn]] void refuse(std::string_view reason) {
  throw PropertyListFault{fmt::format("binary property list: {}", reason)};
}

class BinaryCheck {
 public:
  BinaryCheck(std::string_view bytes, int maximumDepth) : bytes_(bytes), maximumDepth_(maximumDepth) {
    if (bytes_.size() > maximumBytes) refuse("it is too large");
    if (bytes_.size() <= magic.size() + trailerSize) refuse("it is cut short");
    if (!bytes_.starts_with(magic)) refuse("only version 00 is read");
    readTrailer();
  }

  /// Goes through all that the root holds, depth first, each object once; throws when libplist must not see it.
  void run() {
    states_.assign(count_, State{});
    enter(top_);
    while (!path_.empty()) {
      Step& step = path_.back();
      if (step.next == step.object.references) {
        leave();
      } else {
        const std::uint64_t child = reference(step.object, step.next++);
        if (states_[child].phase == Phase::open) refuse("an object contains itself");
        if (states_[child].phase == Phase::unseen) {
          enter(child);
        } else {
          addToParent(states_[child]);
        }
      }
    }
  }

 private:
  enum class Phase : std::uint8_t { unseen, open, done };
  struct State {
    std::uint64_t weight = 0;
    int levels = 0;  ///< of arrays and dictionaries, itself included
    Phase phase = Phase::unseen;
  };
  struct Step {
    std::uint64_t index;
    Object object;
    std::uint64_t next;
  };

  [[nodiscard]] std::uint64_t number(std::size_t at, std::size_t width) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = value << 8 | byteOf(bytes_[at + i]);
    return value;
  }

  void readTrailer() {
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetWidth_ = byteOf(bytes_[trailer + 6]);
    referenceWidth_ = byteOf(bytes_[trailer + 7]);
    count_ = number(trailer + 8, 8);
    top_ = number(trailer + 16, 8);
    tableStart_ = number(trailer + 24, 8);
    if (offsetWidth_ < 1 || offsetWidth_ > 8 || referenceWidth_ < 1 || referenceWidth_ > 8)
      refuse("its trailer is malformed");
    if (count_ > maximumObjects) refuse("it has too many objects");
    if (top_ >= count_) refuse("its root is not one of its objects");
    if (tableStart_ <= magic.size() || tableStart_ > trailer || (trailer - tableStart_) / offsetWidth_ < count_)
      refuse("its table of offsets is not within the file");
  }

  void enter(std::uint64_t index) {
    Object object = describe(number(tableStart_ + index * offsetWidth_, offsetWidth_));
    State& state = states_[index];
    state.phase = Phase::open;
    state.weight = objectWeight + object.size;
    state.levels = object.kind == 0xA || object.kind == 0xD ? 1 : 0;
    path_.push_back({index, object, 0});
    if (path_.size() > static_cast<std::size_t>(maximumDepth_) + 1) refuse("it is nested too deeply");
  }

  void leave() {
    State& state = states_[path_.back().index];
    state.phase = Phase::done;
    path_.pop_back();
    if (!path_.empty()) addToParent(state);
  }

  void addToParent(const State& child) {
    State& parent = states_[path_.back().index];
    parent.weight += child.weight;
    parent.levels = std::max(parent.levels, child.levels + 1);
    if (parent.weight > maximumWeight) refuse("written out it is too large");
    if (parent.levels > maximumDepth_) refuse("it is nested too deeply");
  }

  /// Keys come first among a dictionary's references.
  std::uint64_t reference(const Object& object, std::uint64_t position) const {
    const std::uint64_t index = number(object.content + position * referenceWidth_, referenceWidth_);
    if (index >= count_) refuse("it refers to an object that it does not have");
    if (object.kind == 0xD && position < object.references / 2) {
      const std::uint64_t at = number(tableStart_ + index * offsetWidth_, offsetWidth_);
      const unsigned kind = at < tableStart_ ? byteOf(bytes_[at]) >> 4 : 0;
      if (kind != 0x5 && kind != 0x6) refuse("a key is not a string");
    }
    return index;
  }

  /// Throws unless the object lies between the magic bytes and the table of offsets.
  [[nodiscard]] Object describe(std::uint64_t at) const {
    if (at < magic.size() || at >= tableStart_) refuse("an object is not within the file");
    const unsigned marker = byteOf(bytes_[at]);
    const unsigned low = marker & 0xFU;
    Object object{marker >> 4, 0, at + 1, 0};
    switch (object.kind) {
      case 0x0:
        if (marker != 0x08 && marker != 0x09) refuseKind();
        break;
      case 0x1:
      case 0x2:
      case 0x3:
        object.size = std::uint64_t{1} << low;
        break;
      case 0x4:
      case 0x5:
      case 0x6:
      case 0xA:
      case 0xD:
        readCount(object, low);
        break;
      default:
        refuseKind();
    }
    if (object.size > tableStart_ - object.content) refuse("an object is cut short");
    checkContent(object);
    return object;
  }

  [[noreturn]] static void refuseKind() { refuse("it holds a kind of value that is not known here"); }

  /// How many bytes, characters or references an object has: in the marker, or in an integer that follows it.
  void readCount(Object& object, unsigned low) const {
    std::uint64_t items = low;
    if (low == 0xF) {
      const unsigned marker = object.content < tableStart_ ? byteOf(bytes_[object.content]) : 0;
      const std::size_t width = std::size_t{1} << (marker & 0xFU);
      if (marker >> 4 != 0x1 || width > 8 || tableStart_ - object.content <= width) refuse("a length is malformed");
      items = number(object.content + 1, width);
      object.content += 1 + width;
    }
    if (items > bytes_.size()) refuse("an object is cut short");
    if (object.kind == 0xA) object.references = items;
    if (object.kind == 0xD) object.references = 2 * items;
    object.size = object.references > 0 ? object.references * referenceWidth_ : object.kind == 0x6 ? 2 * items : items;
  }

  /// What libplist would read as something else without a word.
  void checkContent(const Object& object) const {
    const std::size_t at = object.content;
    switch (object.kind) {
      case 0x1:
        if (object.size > 16 || (object.size == 16 && (number(at, 8) != 0 || number(at + 8, 8) >> 63 != 0)))
          refuse("a whole number does not fit 64 bits");
        break;
      case 0x2:
        if (object.size != 4 && object.size != 8) refuse("a number is malformed");
        break;
      case 0x3:
        checkDate(object);
        break;
      case 0x5:
        for (std::size_t i = 0; i < object.size; ++i) {
          if (bytes_[at + i] == 0 || byteOf(bytes_[at + i]) >= 0x80) refuse("a text has a character it cannot have");
        }
        break;
      case 0x6:
        checkUtf16(object);
        break;
      default:
        break;
    }
  }

  /// Seconds since the start of 2001.
  void checkDate(const Object& object) const {
    if (object.size != 8) refuse("a date is malformed");
    constexpr Date epoch = std::chrono::sys_days{std::chrono::year{2001} / 1 / 1};
    const std::uint64_t bits = number(object.content, 8);
    double seconds = 0;
    std::memcpy(&seconds, &bits, sizeof seconds);
    const bool inRange = seconds >= static_cast<double>(wholeSecondsBetween(epoch, earliestWrittenDate)) &&
                         seconds <= static_cast<double>(wholeSecondsBetween(epoch, latestWrittenDate));
    if (!inRange) refuse("a date is outside the years 1 to 9999");
  }

  void checkUtf16(const Object& object) const {
    bool high = false;  // the first half of a pair waits for its second
    for (std::size_t i = 0; i < object.size; i += 2) {
      const std::uint64_t unit = number(object.content + i, 2);
      const bool low = unit >> 10 == 0x37;
      if (unit == 0 || low != high) refuse("a text has a character it cannot have");
      high = unit >> 10 == 0x36;
    }
    if (high) refuse("a text has a character it cannot have");
  }

  std::string_view bytes_;
  int maximumDepth_;
  std::size_t offsetWidth_ = 0;
  std::size_t referenceWidth_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t top_ = 0;
  std::uint64_t tableStart_ = 0;
  std::vector<State> states_;
  std::vector<Step> path_;
};

/// libplist writes control characters as they are.
std::string withoutControlCharacters(std::string_view xml) {
  std::string clean;
  clean.reserve(xml.size());
  for (const char character : xml) {
    if (character == '\r') {
      clean += "&#13;";
    } else if (isXmlCharacter(byteOf(character))) {
      clean += character;
    } else {
      clean += replacementCharacter;
    }
  }
  return clean;
}

}  // namespace

std::string xmlOfBinaryPropertyList(std::string_view bytes, int maximumDepth) {
  BinaryCheck(bytes, maximumDepth).run();
  plist_t root = nullptr;
  plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  const std::unique_ptr<void, decltype(&plist_free)> rootOwner(root, &plist_free);
  if (root == nullptr) refuse("it cannot be read");
  char* xml = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(root, &xml, &length);
  const std::unique_ptr<char, decltype(&plist_to_xml_free)> xmlOwner(xml, &plist_to_xml_free);
  if (xml == nullptr) refuse("it has a value that cannot be written as XML");
  return withoutControlCharacters({xml, length});
}

}  // namespace tallyvane
