// What a command has at hand while it runs.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "cli/Console.h"
#include "common/GuardedFileStore.h"
#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// What writing takes beside the platform, whose files are the guarded ones.
struct WriteAccess {
  programs::GuardedFileStore& files;
  /// Keeps the user's other programs from writing until what it gives back is destroyed.
  std::function<Result<std::shared_ptr<const void>>()> lock;
};

class Session {
 public:
  Session(const Platform& platformOfProgram, Console& consoleOfProgram, WriteAccess access, bool wantsJson)
      : platform(platformOfProgram), console(consoleOfProgram), json(wantsJson), access_(std::move(access)) {}

  const Platform& platform;
  Console& console;
  const bool json;  ///< the command was given --json

  /// Runs one operation that changes bills, tags or settings under the programs' lock, then brings the widget's
  /// snapshot up to date. When a file could not be written, all files are put back, `mend` sets right what stands
  /// outside of them, and the command fails. The operation asks nobody anything, and throws a Failure only before its
  /// first change.
  void write(const std::function<void()>& operation, const std::function<void()>& mend = nullptr);

 private:
  WriteAccess access_;
};

}  // namespace tallyvane::cli
