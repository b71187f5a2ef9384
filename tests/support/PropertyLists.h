// Property lists as text, and what they hold.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/PropertyList.h"

namespace tallyvane::testing {

inline std::string listOf(const std::string& content) { return "<plist version=\"1.0\">" + content + "</plist>"; }

/// The keys of a dictionary as they are written, each with its place as value.
inline std::string written(const std::vector<std::string>& keys) {
  std::string text = "<dict>";
  for (std::size_t i = 0; i < keys.size(); ++i)
    text += "<key>" + keys[i] + "</key><integer>" + std::to_string(i) + "</integer>";
  return text + "</dict>";
}

using Entries = std::vector<std::pair<std::string, int>>;

inline Entries entriesOf(const Dictionary& dictionary) {
  Entries entries;
  for (const auto& [key, value] : dictionary) entries.emplace_back(key, static_cast<int>(*value.get<std::int64_t>()));
  return entries;
}

inline std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

/// Spelt out, because Array{array} is a copy to one compiler and an array of one array to the other.
inline Array holding(Array array) {
  Array outer;
  outer.emplace_back(std::move(array));
  return outer;
}

}  // namespace tallyvane::testing
