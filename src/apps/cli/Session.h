// What a command has at hand while it runs.
#pragma once

#include <functional>
#include <memory>
#include <string>
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
  /// Blocks until callbacks of requests wait to be run; and runs those that wait.
  std::function<void()> waitForCallbacks = nullptr;
  std::function<void()> runCallbacks = nullptr;
};

/// Plays a sound of the desktop's sound theme by its name, or nothing where there is no player.
using SoundPlayer = std::function<void(const std::string& name)>;

class Session {
 public:
  Session(const Platform& platformOfProgram, Console& consoleOfProgram, WriteAccess access, SoundPlayer player,
          bool wantsJson)
      : platform(platformOfProgram),
        console(consoleOfProgram),
        json(wantsJson),
        playSound(std::move(player)),
        access_(std::move(access)) {}

  const Platform& platform;
  Console& console;
  const bool json;  ///< the command was given --json
  const SoundPlayer playSound;

  /// Runs one operation that changes bills, tags or settings under the programs' lock, then brings the widget's
  /// snapshot up to date. When a file could not be written, or the operation throws, all files are put back, `mend`
  /// sets right what stands outside of them, and the command fails. The operation asks nobody anything.
  void write(const std::function<void()>& operation, const std::function<void()>& mend = nullptr);
  /// Runs a listing that puts other rows in the place of the widget's snapshot until it ends, with the other programs
  /// kept from reading that; without the lock when it cannot be had, since the user's own files stay as they are.
  void list(const std::function<void()>& listing);
  /// Runs the callbacks of requests, as they come, until `finished`. What they change is written as by `write`; nothing
  /// is locked while there is nothing to run.
  void awaitCallbacks(const std::function<bool()>& finished);

 private:
  void putBack(const std::function<void()>& mend);

  WriteAccess access_;
};

}  // namespace tallyvane::cli
