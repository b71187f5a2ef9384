#pragma once

#include <set>
#include <string>

#include "cli/terminal/Console.h"
#include "platform/Log.h"

namespace tallyvane::cli {

/// Hands everything on to another log, and shows diagnostics to the person at the console too, each once: an unreadable
/// file, or a copy that was set aside, is something to be told.
class NoticeLog : public Log {
 public:
  NoticeLog(Log& log, Console& console) : log_(log), console_(console) {}

  void line(std::string_view text) override { log_.line(text); }
  void diagnostic(std::string_view text) override {
    log_.diagnostic(text);
    if (shown_.emplace(text).second) console_.error(text);
  }

 private:
  Log& log_;
  Console& console_;
  std::set<std::string> shown_;
};

}  // namespace tallyvane::cli
