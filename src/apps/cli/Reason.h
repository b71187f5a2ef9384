#pragma once

#include <string>

#include "platform/Log.h"

namespace tallyvane::cli {

/// Takes a diagnostic down, to be told in a sentence; the last one stays.
struct Reason : Log {
  void line(std::string_view /*text*/) override {}
  void diagnostic(std::string_view diagnostic) override { text = diagnostic; }
  std::string text;
};

}  // namespace tallyvane::cli
