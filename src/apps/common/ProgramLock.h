#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "foundation/Result.h"
#include "freedesktop/FileDescriptor.h"
#include "platform/FileStore.h"

namespace tallyvane::programs {

/// Held by a program around a whole operation that writes, so that two programs never interleave what each reads,
/// changes and writes back. Let go by its destructor, and by the system when the program dies. Not held while a person
/// is asked. A program that holds it cannot take it a second time.
class ProgramLock {
 public:
  static constexpr std::chrono::milliseconds patience{30'000};
  static constexpr std::chrono::milliseconds silence{1'000};

  using Pause = std::function<void(std::chrono::milliseconds)>;
  static void sleepFor(std::chrono::milliseconds time);

  /// Locks the file at this absolute path, made with its folder when it is not there. While another program holds it,
  /// waits for `patience` at most, and calls `tellWaiting` once after `silence`, so that the person can be told.
  [[nodiscard]] static Result<ProgramLock> take(FileStore& files, const std::string& path,
                                                const std::function<void()>& tellWaiting,
                                                const Pause& pause = sleepFor);

  /// The same without waiting: no value while another program holds it.
  [[nodiscard]] static Result<std::optional<ProgramLock>> tryTake(FileStore& files, const std::string& path);

 private:
  explicit ProgramLock(FileDescriptor file) : file_(std::move(file)) {}
  FileDescriptor file_;
};

}  // namespace tallyvane::programs
