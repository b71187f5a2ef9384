#include "agent/Timers.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace tallyvane::agent {

namespace {

FileDescriptor timerOn(clockid_t clock) {
  FileDescriptor file(::timerfd_create(clock, TFD_NONBLOCK | TFD_CLOEXEC));
  if (!file) throw std::system_error(errno, std::generic_category(), "no timer");
  return file;
}

/// A zero time would switch the timer off. In microseconds, since the far future is beyond 64 bits of nanoseconds.
itimerspec onceAt(std::chrono::microseconds time) {
  using std::chrono::seconds;
  const auto atLeastOne = std::max(time, std::chrono::microseconds{1});
  const auto whole = std::chrono::duration_cast<seconds>(atLeastOne);
  itimerspec spec{};
  spec.it_value.tv_sec = whole.count();
  spec.it_value.tv_nsec = std::chrono::nanoseconds(atLeastOne - whole).count();
  return spec;
}

/// Reading resets it; after the clock was set the read fails, which says no more than that it was readable.
void drain(const FileDescriptor& file) {
  std::uint64_t expirations = 0;
  (void)!::read(file.number(), &expirations, sizeof expirations);
}

}  // namespace

DelayTimer::DelayTimer() : file_(timerOn(CLOCK_MONOTONIC)) {}

void DelayTimer::start(std::chrono::milliseconds delay) {
  if (running_) return;
  running_ = true;
  const itimerspec spec = onceAt(delay);
  ::timerfd_settime(file_.number(), 0, &spec, nullptr);
}

void DelayTimer::acknowledge() {
  drain(file_);
  running_ = false;
}

WallClockTimer::WallClockTimer() : file_(timerOn(CLOCK_REALTIME)) {}

bool WallClockTimer::set(Date moment) {
  const itimerspec spec = onceAt(moment.time_since_epoch());
  constexpr int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
  // This failure is the only notice that the system gives of a clock set just before.
  return ::timerfd_settime(file_.number(), flags, &spec, nullptr) == 0 || errno != ECANCELED;
}

void WallClockTimer::acknowledge() { drain(file_); }

}  // namespace tallyvane::agent
