#pragma once

#include <memory>

#include "freedesktop/EventDescriptor.h"
#include "freedesktop/QueuedMainQueue.h"

namespace tallyvane::cli {

/// How a command waits for the callbacks of its requests.
class CallbackWait {
 public:
  /// The queue may outlive it.
  explicit CallbackWait(QueuedMainQueue& queue);

  /// From now on the signals by which a user or the system ends a program only end a wait. Before any request.
  void holdSignals();
  /// Returns as soon as callbacks wait to be run; false when the program is asked to end first.
  [[nodiscard]] bool wait();

 private:
  std::shared_ptr<const EventDescriptor> posted_ = std::make_shared<EventDescriptor>();
  FileDescriptor signals_;
};

}  // namespace tallyvane::cli
