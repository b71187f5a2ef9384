#include "Desktop.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "common/DesktopPlatform.h"

namespace tallyvane::bench {

ScratchFolder::ScratchFolder() {
  const char* const parent = std::getenv("TMPDIR");
  path_ = std::string(parent == nullptr ? "/var/tmp" : parent) + "/tallyvane-bench-XXXXXX";
  if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot make " + path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Desktop::Desktop(const std::string& folder)
    : files(folder),
      resources({}, files),
      defaults(folder + "/settings.plist", files, log, Durability::synced),
      groupDefaults(folder + "/group.plist", files, log, Durability::cached),
      cloud(folder + "/cloud.plist", files, log),
      platform{clock,     region,  random,    guardedFiles, resources, bookmarks, defaults,  &groupDefaults, cloud,
               calendars, nullptr, workspace, application,  statusBar, http,      mainQueue, mimeTypes,      log} {
  defaults.registerDefaults(programs::firstValues(region));
}

}  // namespace tallyvane::bench
