#include "freedesktop/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

/// The variable when it is an absolute path.
std::optional<std::string> folderVariable(const Environment& environment, std::string_view name) {
  const std::optional<std::string> value = environment(name);
  if (!value || !value->starts_with('/')) return std::nullopt;
  return withoutTrailingSlashes(*value);
}

std::vector<std::string> absolutePartsOf(const std::string& list) {
  std::vector<std::string> folders;
  for (std::size_t start = 0; start <= list.size();) {
    const std::size_t colon = std::min(list.find(':', start), list.size());
    std::string folder = list.substr(start, colon - start);
    if (folder.starts_with('/')) folders.push_back(withoutTrailingSlashes(std::move(folder)));
    start = colon + 1;
  }
  return folders;
}

}  // namespace

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
                     .dataDirs = absolutePartsOf(environment("XDG_DATA_DIRS").value_or("")),
                     .configDirs = absolutePartsOf(environment("XDG_CONFIG_DIRS").value_or(""))};
  if (folders.dataDirs.empty()) folders.dataDirs = {"/usr/local/share", "/usr/share"};
  if (folders.configDirs.empty()) folders.configDirs = {"/etc/xdg"};
  return folders;
}

}  // namespace tallyvane
