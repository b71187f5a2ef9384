// What a command has at hand while it runs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "cli/terminal/Console.h"
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

/// What sending requests takes besides.
struct RequestAccess {
  std::function<void()> holdSignals;       ///< from now on, what asks the program to end shows in `waitForCallbacks`
  std::function<bool()> waitForCallbacks;  ///< blocks until there are any; false when the program is asked to end
  std::function<void()> runCallbacks;      ///< those that wait
  std::function<void()> endRequests;       ///< cancels those on their way and runs their callbacks
  std::function<Result<std::shared_ptr<const void>>()> mailTurn;  ///< held until what it gives back is destroyed
  std::string mailRound;                                          ///< path of the notes of the round under way
};

/// Plays a sound of the desktop's sound theme by its name, or nothing where there is no player.
using SoundPlayer = std::function<void(const std::string& name)>;

class Session {
 public:
  Session(const Platform& platformOfProgram, Console& consoleOfProgram, WriteAccess access, RequestAccess requests,
          SoundPlayer player, bool wantsJson)
      : platform(platformOfProgram),
        console(consoleOfProgram),
        json(wantsJson),
        playSound(std::move(player)),
        access_(std::move(access)),
        requests_(std::move(requests)) {}

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
  /// Runs an operation that starts requests, and then their callbacks, as they come, until `finished`. What each
  /// changes is written as by `write`; nothing is locked while there is nothing to run. When the program is asked to
  /// end, the requests are cancelled, and their callbacks run.
  void converse(const std::function<void()>& operation, const std::function<bool()>& finished);
  /// The turn to send what the mail queue holds, until what it gives back is destroyed.
  [[nodiscard]] std::shared_ptr<const void> takeMailTurn();
  [[nodiscard]] const std::string& mailRound() const { return requests_.mailRound; }

 private:
  void tellingOfCopies(const std::function<void()>& operation);
  void putBack(const std::function<void()>& mend);
  void mendWith(const std::function<void()>& mend);

  WriteAccess access_;
  RequestAccess requests_;
};

}  // namespace tallyvane::cli
