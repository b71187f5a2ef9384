#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "freedesktop/XdgFolders.h"

namespace tallyvane {

/// What the user's session tells its programs through environment variables. Folders are absolute, without a slash at
/// their end; relative ones are left out.
struct SessionEnvironment {
  std::string busAddress;                   ///< of the session bus; empty where there is none
  std::string runtimeFolder;                ///< for files that live as long as the session; empty where there is none
  std::vector<std::string> configFolders;   ///< the user's own first, then the system's by precedence
  std::vector<std::string> dataFolders;     ///< likewise
  std::vector<std::string> programFolders;  ///< PATH
  std::vector<std::string> desktops;        ///< names of the running desktop in lower case, by precedence
  std::string terminal;                     ///< the terminal that the user prefers; empty for no preference

  [[nodiscard]] static SessionEnvironment of(const Environment& environment);
};

/// Absolute path of a program: a name is looked for in PATH, a path only has to be absolute and runnable.
[[nodiscard]] std::optional<std::string> programPath(const SessionEnvironment& environment, std::string_view program);

}  // namespace tallyvane
