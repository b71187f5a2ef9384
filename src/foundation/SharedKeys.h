// The keys of a dictionary, held once for all dictionaries of a kind.
#pragma once

#include <atomic>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace tallyvane {

/// A list of keys that its copies share, in several threads too. It may be longer than the dictionary that uses it,
/// whose keys are then the first ones. A change leaves the other owners as they are.
class SharedKeys {
 public:
  SharedKeys() = default;
  SharedKeys(const SharedKeys& other) noexcept : list_(other.list_) {
    if (list_ != nullptr) list_->owners.fetch_add(1, std::memory_order_relaxed);
  }
  SharedKeys(SharedKeys&& other) noexcept : list_(std::exchange(other.list_, nullptr)) {}
  SharedKeys& operator=(SharedKeys other) noexcept {
    std::swap(list_, other.list_);
    return *this;
  }
  ~SharedKeys() {
    if (list_ != nullptr && list_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) delete list_;
  }

  [[nodiscard]] std::span<const std::string> all() const {
    return list_ == nullptr ? std::span<const std::string>() : list_->keys;
  }
  [[nodiscard]] bool isSharedWith(const SharedKeys& other) const { return list_ == other.list_; }

  /// Makes `key` the one that follows the first `count`.
  void put(std::size_t count, std::string key);
  /// Takes out one of the first `count` keys.
  void erase(std::size_t count, std::size_t place);

 private:
  struct List {
    std::atomic<std::size_t> owners{1};
    std::vector<std::string> keys;
  };
  std::vector<std::string>& own(std::size_t count);

  List* list_ = nullptr;
};

}  // namespace tallyvane
