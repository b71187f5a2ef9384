// Which kind of value a key should have.
#pragma once

#include <initializer_list>
#include <string>

#include "cli/check/Finding.h"
#include "foundation/Value.h"

namespace tallyvane::cli {

enum class Shape {
  text,
  number,  ///< finite
  yesNo,   ///< a boolean, or an integer in its place
  date,
  list,
  texts,  ///< a list of texts
};

struct KeyRule {
  std::string_view key;
  Shape shape;
};

/// What keeps the value (null when absent) from having the shape, as a clause about what is named. Empty when nothing
/// does.
[[nodiscard]] std::string oddness(const std::string& named, const Value* value, Shape shape);

/// Adds a problem of this kind for each key whose value has not its shape. `where` goes before the key in the text.
void addOddKeys(const Dictionary& content, std::initializer_list<KeyRule> rules, FindingKind kind,
                const std::string& where, Problems& problems);

}  // namespace tallyvane::cli
