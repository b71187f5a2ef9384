#include "freedesktop/ThreadWorkQueue.h"

#include <signal.h>

#include <utility>

namespace tallyvane {

namespace {

/// The program's signals are for its main thread.
class NoSignals {
 public:
  NoSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~NoSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  NoSignals(const NoSignals&) = delete;
  NoSignals& operator=(const NoSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

void ThreadWorkQueue::post(std::function<void(std::stop_token)> work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  changed_.notify_one();
  if (thread_.joinable()) return;
  const NoSignals inherited;
  thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

void ThreadWorkQueue::end() {
  if (!thread_.joinable()) return;
  thread_.request_stop();
  thread_.join();
}

void ThreadWorkQueue::run(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (changed_.wait(lock, stop, [this] { return !waiting_.empty(); })) {
    auto work = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    work(stop);
    work = nullptr;  // what it holds goes before anybody waits for the lock again
    lock.lock();
  }
}

}  // namespace tallyvane
