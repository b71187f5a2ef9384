#include "agent/DailyBackups.h"

#include <utility>

#include "common/DailyBackup.h"
#include "common/ProgramLock.h"

namespace tallyvane::agent {

bool DailyBackups::bringUpToDate(programs::DesktopPlatform& desktop) {
  if (programs::isBackedUpToday(desktop.platform())) return true;
  const auto lock = programs::ProgramLock::tryTake(desktop.files(), desktop.paths().lock);
  if (lock && !*lock) return false;
  // Without the lock a bill might be copied while it changes.
  const auto outcome =
      lock ? programs::backUpToday(desktop.platform()) : Result<programs::BackupOutcome>(Error{lock.error()});
  const std::string hindrance = outcome ? std::string() : outcome.error();
  if (!hindrance.empty() && hindrance != saidHindrance_) log_.diagnostic("No backup is made now: " + hindrance);
  saidHindrance_ = hindrance;
  return true;
}

}  // namespace tallyvane::agent
