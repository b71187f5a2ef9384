#pragma once

#include "freedesktop/FileDescriptor.h"

namespace tallyvane {

/// A descriptor by which any thread wakes one that waits for descriptors.
class EventDescriptor {
 public:
  /// Throws std::system_error when the system has none to give.
  EventDescriptor();
  [[nodiscard]] int number() const { return file_.number(); }
  /// It is readable from now on.
  void raise() const;
  /// It no longer is.
  void acknowledge() const;

 private:
  FileDescriptor file_;
};

}  // namespace tallyvane
