#include "common/ProgramLock.h"

#include <thread>

#include "common/Sentences.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane::programs {

void ProgramLock::sleepFor(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

Result<ProgramLock> ProgramLock::take(FileStore& files, const std::string& path,
                                      const std::function<void()>& tellWaiting, const Pause& pause) {
  constexpr std::chrono::milliseconds step{50};
  for (std::chrono::milliseconds waited{0};; waited += step) {
    Result<std::optional<ProgramLock>> lock = tryTake(files, path);
    if (!lock) return Error{lock.error()};
    if (*lock) return std::move(**lock);
    if (waited >= patience) break;
    if (waited == silence) tellWaiting();
    pause(step);
  }
  const auto seconds = static_cast<std::size_t>(patience / std::chrono::seconds(1));
  return Error{countedSentence(
      seconds, "{}: another Tallyvane program has been changing the data for {} second; try again later",
      "{}: another Tallyvane program has been changing the data for {} seconds; try again later", path, seconds)};
}

Result<std::optional<ProgramLock>> ProgramLock::tryTake(FileStore& files, const std::string& path) {
  if (auto error = refusal(path)) return *error;
  if (Result<> created = files.createFolder(parentOf(path)); !created) return Error{created.error()};
  Result<FileDescriptor> lock = openLocked(path, AT_FDCWD, LOCK_EX | LOCK_NB);
  if (!lock) return Error{lock.error()};
  if (!*lock) return std::optional<ProgramLock>();
  return std::optional(ProgramLock(std::move(*lock)));
}

}  // namespace tallyvane::programs
