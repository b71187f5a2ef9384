#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyvane {

/// The value of an environment variable, or nothing.
using Environment = std::function<std::optional<std::string>(std::string_view name)>;

/// The process's own environment; a missing HOME is looked up among the system's users.
[[nodiscard]] Environment processEnvironment();

/// Those of a list with colons between them, without slashes at their ends; relative ones are left out.
[[nodiscard]] std::vector<std::string> absoluteFoldersIn(std::string_view list);

/// The user's base folders after the XDG base-directory standard, as absolute paths without a slash at their end. They
/// need not exist. Where neither the variable nor HOME is an absolute path, a folder starts with "~" and with it every
/// path made from it is relative, which every file operation refuses: nothing lands in some other folder.
struct XdgFolders {
  std::string dataHome;                      ///< XDG_DATA_HOME, else ~/.local/share
  std::string configHome;                    ///< XDG_CONFIG_HOME, else ~/.config
  std::string stateHome;                     ///< XDG_STATE_HOME, else ~/.local/state
  std::vector<std::string> dataDirs;         ///< XDG_DATA_DIRS in the order of preference, else the system's two
  std::vector<std::string> configDirs = {};  ///< XDG_CONFIG_DIRS likewise, else the system's one

  /// Relative values are ignored, as the standard wants it.
  [[nodiscard]] static XdgFolders of(const Environment& environment);
};

}  // namespace tallyvane
