// Compiles only where the adapters are on the include path; no target builds it.
#include "freedesktop/SystemClock.h"

int main() {
  tallyvane::SystemClock clock;
  return clock.now() == clock.now() ? 0 : 1;
}
