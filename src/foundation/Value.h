// The values that property lists, settings and bills are made of.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "foundation/Date.h"
#include "foundation/SharedKeys.h"

namespace tallyvane {

class Value;
using Array = std::vector<Value>;

struct Data {
  std::vector<std::uint8_t> bytes;
  friend bool operator==(const Data&, const Data&) = default;
};

/// Keys to values in the order in which the keys were first set. Lookup is a linear search: dictionaries here have
/// a few dozen keys. Access never inserts. Two dictionaries are equal when they hold equal values under the same
/// keys, whatever the order. A copy shares its keys with the original, and dictionaries that were read from property
/// lists share theirs with others of their kind: a hundred thousand payments have one list of keys.
class Dictionary {
 public:
  using Entry = std::pair<std::string, Value>;

  Dictionary() = default;
  Dictionary(std::initializer_list<Entry> entries);
  /// Empty, and expected to get these keys in this order; it then shares them.
  explicit Dictionary(SharedKeys expected);

  [[nodiscard]] const Value* find(std::string_view key) const;
  [[nodiscard]] Value* find(std::string_view key);
  [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }

  /// The value under the key when it has exactly type T, else null. T is one of Value's eight types.
  template <typename T>
  [[nodiscard]] const T* get(std::string_view key) const;
  template <typename T>
  [[nodiscard]] T* get(std::string_view key);

  /// The value under the key when it has exactly type T, else the fallback.
  template <typename T>
  [[nodiscard]] T valueOr(std::string_view key, T fallback) const;

  /// Replaces the value where the key stands, or appends the key.
  void set(std::string_view key, Value value);
  /// Whether there was something to erase.
  bool erase(std::string_view key);

  /// Appends without looking for the key; for a reader that knows that the key is new.
  void append(std::string key, Value value);
  void reserve(std::size_t count);
  /// The key that is expected next; null when none is. The second appends a value under it.
  [[nodiscard]] const std::string* expectedKey() const;
  void appendExpected(Value value);

  [[nodiscard]] std::size_t size() const;
  [[nodiscard]] bool empty() const;
  /// Both in order: a key and its value have the same place.
  [[nodiscard]] std::span<const std::string> keys() const { return keys_.all().first(size()); }
  [[nodiscard]] std::span<const Value> values() const;
  [[nodiscard]] const SharedKeys& sharedKeys() const { return keys_; }

  /// Over pairs of a key and its value.
  class Iterator;
  [[nodiscard]] Iterator begin() const;
  [[nodiscard]] Iterator end() const;

  friend bool operator==(const Dictionary& left, const Dictionary& right);

 private:
  SharedKeys keys_;  // the first of them are this dictionary's
  std::vector<Value> values_;
};

/// One property-list value: bool, 64-bit integer, double, string, Date, data, Array or Dictionary; there is no null.
class Value {
 public:
  using Storage = std::variant<bool, std::int64_t, double, std::string, Date, Data, Array, Dictionary>;

  template <std::same_as<bool> B>
  Value(B boolean) : storage_(boolean) {}
  template <std::integral I>
  requires(!std::same_as<I, bool> && !std::same_as<I, char>) Value(I integer)
      : storage_(static_cast<std::int64_t>(integer)) {}
  /// A float is widened: the file then holds exactly that double.
  template <std::floating_point F>
  Value(F real) : storage_(static_cast<double>(real)) {}
  Value(std::string text) : storage_(std::move(text)) {}
  Value(std::string_view text) : storage_(std::string(text)) {}
  Value(const char* text) : storage_(std::string(text)) {}
  Value(Date date) : storage_(date) {}
  Value(Data data) : storage_(std::move(data)) {}
  Value(Array array) : storage_(std::move(array)) {}
  Value(Dictionary dictionary) : storage_(std::move(dictionary)) {}

  template <typename T>
  [[nodiscard]] const T* get() const {
    return std::get_if<T>(&storage_);
  }
  template <typename T>
  [[nodiscard]] T* get() {
    return std::get_if<T>(&storage_);
  }
  template <typename T>
  [[nodiscard]] bool is() const {
    return std::holds_alternative<T>(storage_);
  }
  [[nodiscard]] const Storage& storage() const { return storage_; }

  /// Same type and same content; 1, 1.0 and true are three different values.
  friend bool operator==(const Value& left, const Value& right);

 private:
  Storage storage_;
};

class Dictionary::Iterator {
 public:
  Iterator(const std::string* key, const Value* value) : key_(key), value_(value) {}
  [[nodiscard]] std::pair<const std::string&, const Value&> operator*() const { return {*key_, *value_}; }
  Iterator& operator++() {
    ++key_;
    ++value_;
    return *this;
  }
  friend bool operator==(const Iterator&, const Iterator&) = default;

 private:
  const std::string* key_;
  const Value* value_;
};

// Defined here because a value is complete only now.
inline Dictionary::Dictionary(SharedKeys expected) : keys_(std::move(expected)) {}
inline std::size_t Dictionary::size() const { return values_.size(); }
inline bool Dictionary::empty() const { return values_.empty(); }
inline std::span<const Value> Dictionary::values() const { return values_; }
inline Dictionary::Iterator Dictionary::begin() const { return {keys_.all().data(), values_.data()}; }
inline Dictionary::Iterator Dictionary::end() const { return {keys_.all().data() + size(), values_.data() + size()}; }
inline const std::string* Dictionary::expectedKey() const {
  const auto known = keys_.all();
  return known.size() > size() ? &known[size()] : nullptr;
}

template <typename T>
const T* Dictionary::get(std::string_view key) const {
  const Value* value = find(key);
  return value == nullptr ? nullptr : value->get<T>();
}

template <typename T>
T* Dictionary::get(std::string_view key) {
  Value* value = find(key);
  return value == nullptr ? nullptr : value->get<T>();
}

template <typename T>
T Dictionary::valueOr(std::string_view key, T fallback) const {
  const T* value = get<T>(key);
  return value == nullptr ? std::move(fallback) : *value;
}

/// The strings of an array in their order; other elements are left out, no array gives none.
[[nodiscard]] std::vector<std::string> stringsOf(const Array* array);
[[nodiscard]] Array arrayOf(const std::vector<std::string>& strings);

}  // namespace tallyvane
