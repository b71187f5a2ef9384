// The agent as the desktop's launchers and its own second start reach it: org.freedesktop.Application.
#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane::agent {

inline constexpr const char* applicationName = "com.Quillmoor.Tallyvane";

/// Serves the application's object on a connection that outlives it, and holds the application's name once it has it.
class ApplicationObject {
 public:
  /// `activated` is called for each request to show the application, inside the processing of its message.
  ApplicationObject(sdbus::IConnection& connection, std::function<void()> activated);

  /// Whether this program is now the one that runs; false when another is.
  [[nodiscard]] bool takeName();

 private:
  sdbus::IConnection& connection_;
  std::function<void()> activated_;
  std::unique_ptr<sdbus::IObject> object_;
};

/// Hands a start over to the program that runs: the URLs to open, or without any the request to show itself.
[[nodiscard]] Result<> handOver(sdbus::IConnection& connection, const std::vector<std::string>& urls);

}  // namespace tallyvane::agent
