#pragma once

#include <string>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

/// The other programs of the user's session.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Identifiers of the running applications. Without a session nothing is running; the reason goes to the log.
  [[nodiscard]] virtual std::vector<std::string> runningApplications() = 0;
  /// Opens a URL with the application that claims its scheme, and waits until that has taken it, at most 10 seconds.
  virtual Result<> openUrl(const std::string& url) = 0;
};

}  // namespace tallyvane
