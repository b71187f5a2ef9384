#include "agent/MailRounds.h"

#include <malloc.h>

#include <chrono>
#include <exception>
#include <utility>

namespace tallyvane::agent {

namespace {

constexpr std::chrono::milliseconds settlingTime{150};
/// Another program that sends may wait for the service for a while.
constexpr std::chrono::milliseconds waitForTurn{5'000};

}  // namespace

MailRounds::MailRounds(Desktop desktop, Log& log)
    : desktop_(std::move(desktop)), log_(log), called_(std::make_shared<EventDescriptor>()) {}

void MailRounds::attachTo(EventLoop& loop) {
  loop.add(called_->number(), [this] {
    called_->acknowledge();
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

void MailRounds::follow(programs::DesktopPlatform& desktop) {
  desktop.mainQueue().wakeWith([called = called_] { called->raise(); });
}

void MailRounds::comeBackInAnHour() {
  while (!nextRound_.set(desktop_().platform().clock.now() + std::chrono::hours{1})) {
  }
}

void MailRounds::goOn() {
  try {
    programs::DesktopPlatform& desktop = desktop_();
    const auto lock = programs::ProgramLock::tryTake(desktop.files(), desktop.paths().lock);
    if (!lock) log_.diagnostic("Mail goes without the programs' lock: " + lock.error());
    if (lock && !*lock) return settling_.start(settlingTime);
    desktop.mainQueue().runPending();
    noteOutcomes();
    if (!isRoundDue_ || isUnderWay()) return;
    isRoundDue_ = false;
    comeBackInAnHour();
    beginRound();
  } catch (const std::exception& error) {
    log_.diagnostic(std::string("Reminders by mail could not be looked after: ") + error.what());
  }
}

programs::MailRoundNotes MailRounds::notes() { return {desktop_().platform(), desktop_().paths().mailRound}; }

void MailRounds::noteOutcomes() {
  if (!manager_ || !turn_) return;
  if (const Result<> noted = notes().note(manager_->messagesOnTheirWay()); !noted) {
    log_.diagnostic("Mail that was sent may be sent again: " + noted.error());
  }
  if (!isUnderWay()) turn_.reset();
}

/// One round at a time, to the end of its requests.
void MailRounds::beginRound() {
  if (!mayBegin() || !takeTurn()) return;
  if (const Result<> prepared = prepare(); !prepared) {
    turn_.reset();
    return log_.diagnostic("The mail queue waits until it can be written: " + prepared.error());
  }
  manager_ = std::make_unique<QMEmailManager>(desktop_().platform());
  manager_->checkForMessagesToSendAsynchronous(true);
  noteOutcomes();
  ::malloc_trim(0);  // what the bills took is not needed until the next round
}

bool MailRounds::takeTurn() {
  auto turn = programs::ProgramLock::tryTake(desktop_().files(), desktop_().paths().mailTurn);
  if (turn && *turn) {
    turn_ = std::move(*turn);
    return true;
  }
  if (!turn) log_.diagnostic("The mail queue waits: " + turn.error());
  isRoundDue_ = static_cast<bool>(turn);
  if (isRoundDue_) settling_.start(waitForTurn);
  return false;
}

Result<> MailRounds::prepare() {
  programs::GuardedFileStore& files = desktop_().files();
  files.begin();
  try {
    notes().prepareMailQueue();
  } catch (...) {
    (void)files.abandon();
    turn_.reset();
    throw;
  }
  return files.finish();
}

/// What is missing is said once, and only to those who want mail.
bool MailRounds::mayBegin() {
  const Platform& platform = desktop_().platform();
  (void)platform.defaults.synchronize();
  const std::optional<std::string> hindrance = programs::mailHindrance(platform);
  const bool isNews = hindrance && *hindrance != saidHindrance_;
  if (isNews && programs::wantsMail(platform)) log_.diagnostic("No reminders go by mail: " + *hindrance);
  saidHindrance_ = hindrance.value_or(saidHindrance_);
  return !hindrance;
}

void MailRounds::endRequests() {
  programs::DesktopPlatform& desktop = desktop_();
  std::optional<programs::ProgramLock> held;
  if (isUnderWay()) {
    auto lock = programs::ProgramLock::take(desktop.files(), desktop.paths().lock, [] {});
    if (!lock) log_.diagnostic("Mail that was on its way is put back without the programs' lock: " + lock.error());
    if (lock) held = std::move(*lock);
  }
  desktop.endRequests();
  noteOutcomes();
  manager_.reset();
  isRoundDue_ = true;
  settling_.start(settlingTime);
}

}  // namespace tallyvane::agent
