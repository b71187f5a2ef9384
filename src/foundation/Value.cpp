#include "foundation/Value.h"

#include <algorithm>

namespace tallyvane {

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
  reserve(entries.size());
  for (const Entry& entry : entries) set(entry.first, entry.second);
}

const Value* Dictionary::find(std::string_view key) const {
  for (const Entry& entry : entries_) {
    if (entry.first == key) return &entry.second;
  }
  return nullptr;
}

Value* Dictionary::find(std::string_view key) {
  for (Entry& entry : entries_) {
    if (entry.first == key) return &entry.second;
  }
  return nullptr;
}

void Dictionary::set(std::string_view key, Value value) {
  if (Value* present = find(key)) {
    *present = std::move(value);
  } else {
    append(std::string(key), std::move(value));
  }
}

bool Dictionary::erase(std::string_view key) {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.first == key; });
  if (found == entries_.end()) return false;
  entries_.erase(found);
  return true;
}

void Dictionary::append(std::string key, Value value) { entries_.emplace_back(std::move(key), std::move(value)); }

void Dictionary::reserve(std::size_t count) { entries_.reserve(count); }

bool operator==(const Dictionary& left, const Dictionary& right) {
  if (left.size() != right.size()) return false;
  return std::all_of(left.begin(), left.end(), [&](const Dictionary::Entry& entry) {
    const Value* other = right.find(entry.first);
    return other != nullptr && *other == entry.second;
  });
}

bool operator==(const Value& left, const Value& right) { return left.storage_ == right.storage_; }

std::vector<std::string> stringsOf(const Array* array) {
  std::vector<std::string> strings;
  if (array == nullptr) return strings;
  strings.reserve(array->size());
  for (const Value& element : *array) {
    if (const auto* text = element.get<std::string>()) strings.push_back(*text);
  }
  return strings;
}

Array arrayOf(const std::vector<std::string>& strings) { return Array(strings.begin(), strings.end()); }

}  // namespace tallyvane
