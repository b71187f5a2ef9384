#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "foundation/Result.h"

namespace tallyvane::cli {

/// What a program's exit status says.
enum class ExitStatus { done = 0, couldNot = 1, wrongUsage = 2 };

/// Ends a command: one sentence for standard error, and the exit status. What the command has written by then is put
/// back (see Session::write).
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& sentence) : std::runtime_error(sentence), status_(status) {}
  [[nodiscard]] ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

[[noreturn]] inline void couldNot(const std::string& sentence) { throw Failure(ExitStatus::couldNot, sentence); }
[[noreturn]] inline void wrongUsage(const std::string& sentence) { throw Failure(ExitStatus::wrongUsage, sentence); }

/// What a person meant by something they typed; the command fails with the sentence of what could not be understood.
template <typename T>
[[nodiscard]] T understood(Result<T> read) {
  if (!read) wrongUsage(read.error());
  return std::move(*read);
}

}  // namespace tallyvane::cli
