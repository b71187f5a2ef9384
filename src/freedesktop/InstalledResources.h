#pragma once

#include <string>
#include <vector>

#include "freedesktop/XdgFolders.h"
#include "platform/FileStore.h"
#include "platform/Resources.h"

namespace tallyvane {

/// Resources in the folders "pictures" (NAME.png) and "Contents/Resources" (texts) of the first of several folders that
/// has them. A name that would lead out of its folder is none, and so is a text that is not valid UTF-8.
class InstalledResources : public Resources {
 public:
  InstalledResources(std::vector<std::string> folders, FileStore& files)
      : folders_(std::move(folders)), files_(files) {}

  [[nodiscard]] std::optional<std::string> picture(std::string_view name) override;
  [[nodiscard]] std::optional<std::string> text(std::string_view name) override;

 private:
  [[nodiscard]] std::optional<std::string> find(const std::string& folder, std::string_view name);

  std::vector<std::string> folders_;
  FileStore& files_;
};

/// Where the resources of an installed program are looked for: "share/tallyvane" beside the folder of its executable,
/// then "tallyvane" in the data folders of the system. `executable` is an absolute path.
[[nodiscard]] std::vector<std::string> resourceFolders(const std::string& executable, const XdgFolders& folders);

/// The absolute path of the running program's file; empty when the system does not tell.
[[nodiscard]] std::string ownExecutable();

}  // namespace tallyvane
