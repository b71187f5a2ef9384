#pragma once

#include "freedesktop/FileDescriptor.h"

namespace tallyvane::agent {

/// The signals that ask a program to end, and those of its children's ends, as a descriptor. Made before any thread;
/// from then on they no longer interrupt.
class Signals {
 public:
  /// Throws std::system_error when the system refuses.
  Signals();
  [[nodiscard]] int descriptor() const { return file_.number(); }
  /// Takes the signals that have come, and leave of children that have ended; whether the program is asked to end.
  [[nodiscard]] bool askToEnd();

 private:
  FileDescriptor file_;
};

}  // namespace tallyvane::agent
