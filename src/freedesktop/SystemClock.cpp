#include "freedesktop/SystemClock.h"

#include <chrono>

namespace tallyvane {

Date SystemClock::now() { return std::chrono::floor<Date::duration>(std::chrono::system_clock::now()); }

}  // namespace tallyvane
