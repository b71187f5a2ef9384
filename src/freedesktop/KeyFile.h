// The desktop's files of keys in groups.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyvane {

/// One group with its keys and raw values in their order.
struct KeyFileGroup {
  std::string name;
  std::vector<std::pair<std::string, std::string>> entries;

  /// The raw value; empty when there is no such key.
  [[nodiscard]] std::string_view value(std::string_view key) const;
};

class KeyFile {
 public:
  /// Comments, and lines that are neither a group nor a key, are left out. A group that comes twice is one.
  explicit KeyFile(std::string_view text);

  /// The group; an empty one when there is none of this name.
  [[nodiscard]] const KeyFileGroup& group(std::string_view name) const;

 private:
  KeyFileGroup& groupNamed(std::string_view name);

  std::vector<KeyFileGroup> groups_;
};

/// A raw value as text: \s, \n, \t, \r and \\ stand for what they mean, an unknown escape for itself.
[[nodiscard]] std::string unescapedText(std::string_view raw);
/// The items of a raw list, "a;b;". A semicolon after a backslash belongs to its item. Empty items are left out.
[[nodiscard]] std::vector<std::string> listItems(std::string_view raw);

}  // namespace tallyvane
