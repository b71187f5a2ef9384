#pragma once

#include <string_view>

namespace tallyvane {

/// The system log. Two channels: the product's fixed lines, which go out as they stand and in the order given, and
/// our own diagnostics, which never stand between them. Neither fails visibly.
class Log {
 public:
  virtual ~Log() = default;
  /// One of the product's fixed lines, without a line feed.
  virtual void line(std::string_view text) = 0;
  /// What an operator should know beside those lines: names the file, the key and what is to be done.
  virtual void diagnostic(std::string_view text) = 0;
};

}  // namespace tallyvane
