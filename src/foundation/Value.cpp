#include "foundation/Value.h"

#include <utility>

namespace tallyvane {

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
  reserve(entries.size());
  for (const Entry& entry : entries) set(entry.first, entry.second);
}

const Value* Dictionary::find(std::string_view key) const {
  const std::string* known = keys_.all().data();
  for (const Value& value : values_) {
    if (*known++ == key) return &value;
  }
  return nullptr;
}

Value* Dictionary::find(std::string_view key) { return const_cast<Value*>(std::as_const(*this).find(key)); }

void Dictionary::set(std::string_view key, Value value) {
  if (Value* present = find(key)) {
    *present = std::move(value);
  } else {
    append(std::string(key), std::move(value));
  }
}

bool Dictionary::erase(std::string_view key) {
  const Value* found = find(key);
  if (found == nullptr) return false;
  const auto place = found - values_.data();
  keys_.erase(size(), static_cast<std::size_t>(place));
  values_.erase(values_.begin() + place);
  return true;
}

void Dictionary::append(std::string key, Value value) {
  keys_.put(size(), std::move(key));
  values_.push_back(std::move(value));
}

void Dictionary::appendExpected(Value value) { values_.push_back(std::move(value)); }

void Dictionary::reserve(std::size_t count) { values_.reserve(count); }

bool operator==(const Dictionary& left, const Dictionary& right) {
  if (left.size() != right.size()) return false;
  for (const auto& [key, value] : left) {
    const Value* other = right.find(key);
    if (other == nullptr || *other != value) return false;
  }
  return true;
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
