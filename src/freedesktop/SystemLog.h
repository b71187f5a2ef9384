#pragma once

#include <string>

#include "platform/Log.h"

namespace tallyvane {

/// The journal, or whatever takes system messages here: the product's lines with priority "notice", our diagnostics
/// with priority "warning". One per program.
class SystemLog : public Log {
 public:
  /// `program` names the sender. With `verbose` everything goes to standard error too: the product's lines as they
  /// stand, diagnostics after the program's name and a colon.
  SystemLog(std::string program, bool verbose);
  ~SystemLog() override;
  SystemLog(const SystemLog&) = delete;
  SystemLog& operator=(const SystemLog&) = delete;

  void line(std::string_view text) override;
  void diagnostic(std::string_view text) override;

 private:
  std::string program_;
  bool verbose_;
};

}  // namespace tallyvane
