#pragma once

#include <optional>
#include <string>

#include "platform/Platform.h"

namespace tallyvane::programs {

/// The folder of the previous version: the one around the data folder where that is one, else the usual place, whether
/// or not anything is there.
[[nodiscard]] std::string usualFolderOfPreviousVersion(const Platform& platform);

/// The same when there is something in it to be imported and no bill of today's has been made yet.
[[nodiscard]] std::optional<std::string> folderToOfferForImport(const Platform& platform);

}  // namespace tallyvane::programs
