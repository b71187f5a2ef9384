#include "freedesktop/QueuedMainQueue.h"

namespace tallyvane {

void QueuedMainQueue::post(std::function<void()> work) {
  std::function<void()> wake;
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
    wake = wake_;
  }
  if (wake) wake();
}

void QueuedMainQueue::wakeWith(std::function<void()> wake) {
  const std::lock_guard lock(mutex_);
  wake_ = std::move(wake);
}

void QueuedMainQueue::runPending() {
  while (const std::function<void()> work = next()) work();
}

std::function<void()> QueuedMainQueue::next() {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty()) return {};
  std::function<void()> work = std::move(waiting_.front());
  waiting_.pop_front();
  return work;
}

}  // namespace tallyvane
