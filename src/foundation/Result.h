// What an operation that can fail gives back.
#pragma once

#include <concepts>
#include <string>
#include <utility>
#include <variant>

namespace tallyvane {

/// Why something failed: a clause fit to follow a colon, naming the file and the system's reason.
struct Error {
  std::string text;
};

/// A T, or the error that kept it from being made.
template <typename T = std::monostate>
class [[nodiscard]] Result {
 public:
  Result(T value) : content_(std::move(value)) {}
  Result(Error error) : content_(std::move(error)) {}
  Result() requires std::same_as<T, std::monostate>
  = default;

  [[nodiscard]] explicit operator bool() const { return std::holds_alternative<T>(content_); }

  /// Only for a result that holds one.
  [[nodiscard]] T& operator*() { return std::get<T>(content_); }
  [[nodiscard]] const T& operator*() const { return std::get<T>(content_); }
  [[nodiscard]] T* operator->() { return &std::get<T>(content_); }
  [[nodiscard]] const T* operator->() const { return &std::get<T>(content_); }

  /// The failure's text; empty when there was none.
  [[nodiscard]] std::string error() const {
    const Error* failure = std::get_if<Error>(&content_);
    return failure == nullptr ? std::string() : failure->text;
  }

 private:
  std::variant<T, Error> content_;
};

}  // namespace tallyvane
