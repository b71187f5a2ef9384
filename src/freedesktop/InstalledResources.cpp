#include "freedesktop/InstalledResources.h"

#include <filesystem>

#include "foundation/Texts.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane {

std::optional<std::string> InstalledResources::picture(std::string_view name) {
  std::string file(name);
  if (!file.ends_with(".png")) file += ".png";
  return find("pictures", file);
}

std::optional<std::string> InstalledResources::text(std::string_view name) {
  const std::optional<std::string> path = find("Contents/Resources", name);
  if (!path) return std::nullopt;
  Result<std::string> content = files_.read(*path);
  return content && isValidUtf8(*content) ? std::optional<std::string>(std::move(*content)) : std::nullopt;
}

std::optional<std::string> InstalledResources::find(const std::string& folder, std::string_view name) {
  // Icon names come from bill files, which anybody may have written.
  const bool leadsOut = name.empty() || name.front() == '.' || name.find('/') != std::string_view::npos;
  if (leadsOut) return std::nullopt;
  for (const std::string& base : folders_) {
    std::string path = base + "/" + folder + "/" + std::string(name);
    if (files_.exists(path)) return path;
  }
  return std::nullopt;
}

std::vector<std::string> resourceFolders(const std::string& executable, const XdgFolders& folders) {
  std::vector<std::string> found;
  if (executable.starts_with('/')) {
    found.push_back((std::filesystem::path(parentOf(executable)).parent_path() / "share/tallyvane").string());
  }
  for (const std::string& folder : folders.dataDirs) found.push_back(folder + "/tallyvane");
  return found;
}

std::string ownExecutable() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

}  // namespace tallyvane
