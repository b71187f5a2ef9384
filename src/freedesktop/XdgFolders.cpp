#include "freedesktop/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "freedesktop/PosixPaths.h"
#include "freedesktop/TextParts.h"

namespace tallyvane {

namespace {

/// The variable when it is an absolute path.
std::optional<std::string> folderVariable(const Environment& environment, std::string_view name) {
  const std::optional<std::string> value = environment(name);
  if (!value || !value->starts_with('/')) return std::nullopt;
  return withoutTrailingSlashes(*value);
}

}  // namespace

std::vector<std::string> absoluteFoldersIn(std::string_view list) {
  std::vector<std::string> folders;
  while (!list.empty()) {
    const std::string_view part = takeUpTo(list, ':');
    if (part.starts_with('/')) folders.push_back(withoutTrailingSlashes(std::string(part)));
  }
  return folders;
}

Environment processEnvironment() {
  return [](std::string_view name) -> std::optional<std::string> {
    if (const char* value = std::getenv(std::string(name).c_str())) return value;
    if (name != "HOME") return std::nullopt;
    const passwd* user = ::getpwuid(::getuid());
    return user == nullptr ? std::nullopt : std::optional<std::string>(user->pw_dir);
  };
}

XdgFolders XdgFolders::of(const Environment& environment) {
  const std::string home = folderVariable(environment, "HOME").value_or("~");
  const auto folder = [&](std::string_view variable, const char* belowHome) {
    if (auto chosen = folderVariable(environment, variable)) return *chosen;
    return (home == "/" ? std::string() : home) + belowHome;
  };
  XdgFolders folders{.dataHome = folder("XDG_DATA_HOME", "/.local/share"),
                     .configHome = folder("XDG_CONFIG_HOME", "/.config"),
                     .stateHome = folder("XDG_STATE_HOME", "/.local/state"),
                     .dataDirs = absoluteFoldersIn(environment("XDG_DATA_DIRS").value_or("")),
                     .configDirs = absoluteFoldersIn(environment("XDG_CONFIG_DIRS").value_or(""))};
  if (folders.dataDirs.empty()) folders.dataDirs = {"/usr/local/share", "/usr/share"};
  if (folders.configDirs.empty()) folders.configDirs = {"/etc/xdg"};
  return folders;
}

}  // namespace tallyvane
