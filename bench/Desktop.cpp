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
      platform{.clock = clock,
               .region = rest.region,
               .random = random,
               .files = guardedFiles,
               .resources = resources,
               .bookmarks = bookmarks,
               .defaults = defaults,
               .groupDefaults = &groupDefaults,
               .cloud = cloud,
               .calendars = rest.calendars,
               .notifications = nullptr,
               .workspace = rest.workspace,
               .application = rest.workspace,
               .statusBar = rest.statusBar,
               .http = rest.http,
               .workQueue = rest.workQueue,
               .mainQueue = rest.mainQueue,
               .mimeTypes = rest.mimeTypes,
               .mail = rest.mail,
               .log = log} {
  defaults.registerDefaults(programs::firstValues(rest.region));
}

}  // namespace tallyvane::bench
