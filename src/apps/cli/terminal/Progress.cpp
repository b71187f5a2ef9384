#include "cli/terminal/Progress.h"

namespace tallyvane::cli {

void Progress::show(const std::function<std::string()>& text) {
  if (Clock::now() < next_) return;
  next_ = Clock::now() + std::chrono::milliseconds{100};
  console_.progress(text());
}

}  // namespace tallyvane::cli
