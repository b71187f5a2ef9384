#include "agent/Reminders.h"

#include <malloc.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "common/ProgramLock.h"
#include "common/ReminderPass.h"
#include "freedesktop/PosixPaths.h"
#include "storage/Keys.h"

namespace tallyvane::agent {

namespace {

/// A program that rewrites bills changes the schedule several times; it is looked at once.
constexpr std::chrono::milliseconds settlingTime{150};
/// After a failed write, which may work when there is room again.
constexpr std::chrono::minutes retryTime{1};

}  // namespace

Reminders::Reminders(sdbus::IConnection& connection, Desktop desktop, std::function<void(const std::string& bid)> view,
                     Log& log)
    : desktop_(std::move(desktop)),
      log_(log),
      deliveries_(connection,
                  {[this]() -> PlistNotificationCenter& { return desktop_().notifications(); },
                   [this] { return desktop_().platform().clock.now(); }, [this] { settling_.start(settlingTime); },
                   [view = std::move(view)](const Dictionary& userInfo) {
                     if (const auto* bid = userInfo.get<std::string>(key::Bid)) view(*bid);
                   }},
                  log) {}

void Reminders::attachTo(EventLoop& loop) {
  loop.add(fileWatch_.descriptor(), [this] {
    if (fileWatch_.takeChanges()) settling_.start(settlingTime);
  });
  loop.add(settling_.descriptor(), [this] {
    settling_.acknowledge();
    bringUpToDate();
  });
  loop.add(next_.descriptor(), [this] {
    next_.acknowledge();
    bringUpToDate();
  });
}

/// The schedule is watched before it is read, so that no change falls in between.
void Reminders::bringUpToDate() {
  try {
    watchSchedule();
    const auto lock = programs::ProgramLock::tryTake(desktop_().files(), desktop_().paths().lock);
    if (!lock) log_.diagnostic("Reminders are made without the programs' lock: " + lock.error());
    if (lock && !*lock) return settling_.start(settlingTime);
    const bool passed = passWhenDue();
    deliverAndWait(!passed);
  } catch (const std::exception& error) {
    log_.diagnostic(std::string("The reminders could not be brought up to date: ") + error.what());
  }
}

bool Reminders::passWhenDue() {
  const Platform& platform = desktop_().platform();
  if (!reasons_.areNew(platform)) return true;
  const Result<> passed = programs::runReminderPass(platform);
  if (passed) reasons_.note(platform);
  if (!passed) log_.diagnostic("The notifications were not scheduled anew: " + passed.error());
  ::malloc_trim(0);  // what the bills took is not needed until the next pass
  return static_cast<bool>(passed);
}

bool Reminders::deliver(Date now) {
  const Result<> delivered = deliveries_.deliver(now);
  if (!delivered) log_.diagnostic("Notifications wait until their list can be written: " + delivered.error());
  return static_cast<bool>(delivered);
}

/// What is due up to a moment is delivered, and waited for is what comes after that same moment.
void Reminders::deliverAndWait(bool isBehind) {
  Date next;
  do {
    const Date now = desktop_().platform().clock.now();
    isBehind = !deliver(now) || isBehind;
    next = desktop_().notifications().nextAfter(now).value_or(distantFuture);
    if (isBehind) next = std::min(next, now + retryTime);
  } while (!next_.set(next));
}

void Reminders::watchSchedule() {
  const std::string& schedule = desktop_().paths().notifications;
  fileWatch_.watch(
      {{parentOf(schedule), [name = nameOf(schedule)](std::string_view changed) { return changed == name; }}});
}

}  // namespace tallyvane::agent
