#include "freedesktop/SystemLog.h"

#include <syslog.h>

#include <cstdio>
#include <utility>

namespace tallyvane {

SystemLog::SystemLog(std::string program, bool verbose) : program_(std::move(program)), verbose_(verbose) {
  ::openlog(program_.c_str(), LOG_PID, LOG_USER);
}

SystemLog::~SystemLog() { ::closelog(); }

void SystemLog::line(std::string_view text) {
  const std::string message(text);
  ::syslog(LOG_NOTICE, "%s", message.c_str());
  if (verbose_) std::fputs((message + "\n").c_str(), stderr);
}

void SystemLog::diagnostic(std::string_view text) {
  const std::string message(text);
  ::syslog(LOG_WARNING, "%s", message.c_str());
  if (verbose_) std::fputs((program_ + ": " + message + "\n").c_str(), stderr);
}

}  // namespace tallyvane
