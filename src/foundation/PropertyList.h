// Property lists: from bytes to values and back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/Result.h"
#include "foundation/Value.h"

namespace tallyvane {

/// What a list may have at most; one beyond that is refused before it can cost much time or memory. These hold for a
/// file of the data folder.
struct PropertyListLimits {
  int depth = 64;
  std::size_t bytes = std::size_t{32} << 20;
};

/// For files that hold the content of many others some levels deeper: suites of settings and the mirror.
inline constexpr PropertyListLimits collectionLimits{.depth = 72, .bytes = std::size_t{1} << 30};

/// Reads an XML property list, or a binary one (which begins with "bplist"). Strict: valid UTF-8 (a byte-order mark is
/// taken), the root inside a plist element, no document type of its own and no entity beyond the five of XML and
/// character references, depth and size bounded, dates exact ("2027-03-01T00:00:00Z", years of one to four digits; a
/// day or hour that does not exist is refused), integers that fit 64 bits (decimal, or hexadecimal after 0x), reals in
/// the C form or nan, inf, +infinity and the like, white-space-only strings kept. A key that comes twice keeps its
/// first place and its last value. What is not a property list gives no value; the error says why and at which line.
[[nodiscard]] Result<Value> readPropertyList(std::string_view bytes, PropertyListLimits limits = {});

/// The canonical XML form: UTF-8, tabs, keys in the dictionary's order, whole seconds (cut toward the past), reals in
/// the shortest form that reads back equal (nan, inf and -inf as words), years written with four digits; always ends
/// in a line feed. Bytes of a string that are not valid UTF-8, and control characters that XML cannot carry, are
/// written as U+FFFD, so that what is written can always be read.
[[nodiscard]] std::string writePropertyList(const Value& value);

}  // namespace tallyvane
