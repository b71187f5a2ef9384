#include "freedesktop/QueuedMainQueue.h"

namespace tallyvane {

void QueuedMainQueue::post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  posted_.notify_one();
  if (wake_) wake_();
}

void QueuedMainQueue::waitForWork() {
  std::unique_lock lock(mutex_);
  posted_.wait(lock, [this] { return !waiting_.empty(); });
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
