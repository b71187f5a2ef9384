#include "agent/MailRounds.h"

#include <malloc.h>
#include <sys/eventfd.h>

#include <chrono>
#include <exception>
#include <system_error>
#include <utility>

#include "common/MailRound.h"
#include "common/ProgramLock.h"

namespace tallyvane::agent {

namespace {

constexpr std::chrono::milliseconds settlingTime{150};
constexpr std::chrono::milliseconds waitForDesktop{10'000};

FileDescriptor eventFile() {
  FileDescriptor file(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (!file) throw std::system_error(errno, std::generic_category(), "no event descriptor");
  return file;
}

}  // namespace

MailRounds::MailRounds(Desktop desktop, Log& log) : desktop_(std::move(desktop)), log_(log), called_(eventFile()) {}

void MailRounds::attachTo(EventLoop& loop) {
  loop.add(called_.number(), [this] {
    ::eventfd_t count = 0;
    (void)::eventfd_read(called_.number(), &count);
    goOn();
  });
  loop.add(settling_.descriptor(), [this] {
    settling_.acknowledge();
    goOn();
  });
  loop.add(nextRound_.descriptor(), [this] {
    nextRound_.acknowledge();
    isRoundDue_ = true;
    goOn();
  });
  settling_.start(settlingTime);
}

void MailRounds::comeBackInAnHour() {
  while (!nextRound_.set(desktop_()->platform().clock.now() + std::chrono::hours{1})) {
  }
}

void MailRounds::goOn() {
  try {
    programs::DesktopPlatform* desktop = desktop_();
    if (desktop == nullptr) return settling_.start(waitForDesktop);
    const auto lock = programs::ProgramLock::tryTake(desktop->files(), desktop->paths().lock);
    if (!lock) log_.diagnostic("Mail goes without the programs' lock: " + lock.error());
    if (lock && !*lock) return settling_.start(settlingTime);
    desktop->mainQueue().runPending();
    if (!std::exchange(isRoundDue_, false)) return;
    comeBackInAnHour();
    beginRound();
  } catch (const std::exception& error) {
    log_.diagnostic(std::string("Reminders by mail could not be looked after: ") + error.what());
  }
}

/// One round at a time, to the end of its requests.
void MailRounds::beginRound() {
  const Platform& platform = desktop_()->platform();
  if (!mayBegin()) return;
  desktop_()->mainQueue().wakeWith([this] { (void)::eventfd_write(called_.number(), 1); });
  programs::GuardedFileStore& files = desktop_()->files();
  files.begin();
  programs::prepareMailQueue(platform);
  if (const Result<> prepared = files.finish(); !prepared) {
    return log_.diagnostic("The mail queue waits until it can be written: " + prepared.error());
  }
  manager_ = std::make_unique<QMEmailManager>(platform);
  manager_->checkForMessagesToSendAsynchronous(true);
  ::malloc_trim(0);  // what the bills took is not needed until the next round
}

/// What is missing is said once, and only to those who want mail.
bool MailRounds::mayBegin() {
  if (manager_ && manager_->messagesOnTheirWay() > 0) return false;
  const Platform& platform = desktop_()->platform();
  (void)platform.defaults.synchronize();
  const std::optional<std::string> hindrance = programs::mailHindrance(platform);
  const bool isNews = hindrance && *hindrance != saidHindrance_;
  if (isNews && programs::wantsMail(platform)) log_.diagnostic("No reminders go by mail: " + *hindrance);
  saidHindrance_ = hindrance.value_or(saidHindrance_);
  return !hindrance;
}

void MailRounds::endRequests() {
  programs::DesktopPlatform* desktop = desktop_();
  if (desktop == nullptr) return;
  const auto lock = programs::ProgramLock::tryTake(desktop->files(), desktop->paths().lock);
  if (!lock || !*lock) log_.diagnostic("Mail that was on its way is put back without the programs' lock");
  desktop->endRequests();
  manager_.reset();
  isRoundDue_ = true;
  settling_.start(settlingTime);
}

}  // namespace tallyvane::agent
