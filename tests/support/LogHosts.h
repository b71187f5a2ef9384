// A log in memory, and the system's as it shows on standard error, for the contract of the port.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "freedesktop/SystemLog.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

/// `written` gives the lines, a bar, and the diagnostics.
struct LogInMemory {
  std::string written() const {
    std::string all;
    for (const std::string& line : log.lines) all += line + "\n";
    all += "|";
    for (const std::string& diagnostic : log.diagnostics) all += diagnostic + "\n";
    return all;
  }
  RecordingLog log;
};

struct LogOnStandardError {
  LogOnStandardError() { ::testing::internal::CaptureStderr(); }
  std::string written() const {
    const std::string sender = "tallyvane: ";
    std::istringstream shown(::testing::internal::GetCapturedStderr());
    std::string lines;
    std::string diagnostics;
    for (std::string line; std::getline(shown, line);) {
      if (line.starts_with(sender)) {
        diagnostics += line.substr(sender.size()) + "\n";
      } else {
        lines += line + "\n";
      }
    }
    return lines + "|" + diagnostics;
  }
  SystemLog log{"tallyvane", true};
};

}  // namespace tallyvane::testing
