#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "platform/WorkQueue.h"

namespace tallyvane {

/// One thread, started for the first piece of work.
class ThreadWorkQueue : public WorkQueue {
 public:
  ThreadWorkQueue() = default;
  ~ThreadWorkQueue() override { end(); }
  ThreadWorkQueue(const ThreadWorkQueue&) = delete;
  ThreadWorkQueue& operator=(const ThreadWorkQueue&) = delete;

  void post(std::function<void(std::stop_token)> work) override;
  /// Asks the work to hurry, and returns when all of it is done. Nothing may be posted from then on.
  void end();

 private:
  void run(const std::stop_token& stop);

  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::deque<std::function<void(std::stop_token)>> waiting_;
  std::jthread thread_;
};

}  // namespace tallyvane
