#pragma once

#include <optional>
#include <string>

#include "platform/Platform.h"

namespace tallyvane {

/// Path of the newest backup, as the settings record it; nothing where they name none. Whether it is there is not
/// looked at. Only what is named by an identifier is a backup: the backup folder holds the data folder, too.
[[nodiscard]] std::optional<std::string> newestBackup(const Platform& platform);

}  // namespace tallyvane
