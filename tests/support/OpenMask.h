// The mask with which whatever a program asks for is granted.
#pragma once

#include <sys/stat.h>

namespace tallyvane::testing {

struct OpenMask {
  OpenMask() : before(::umask(0)) {}
  ~OpenMask() { ::umask(before); }
  OpenMask(const OpenMask&) = delete;
  OpenMask& operator=(const OpenMask&) = delete;
  mode_t before;
};

}  // namespace tallyvane::testing
