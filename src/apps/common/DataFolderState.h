// What stands where the data folder is, and what an interrupted restore or change of its place has left behind.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace tallyvane::programs {

/// How many bills the index of this data folder lists, in whatever state; no value when it has no index that can be
/// read.
[[nodiscard]] std::optional<std::size_t> billsListedIn(const Platform& platform, const std::string& folder);

[[nodiscard]] bool isEmptyFolder(FileStore& files, const std::string& path);

/// Where the folder that a restore replaces is kept until the restore has succeeded: beside the data folder, so that it
/// gets there and back in one step. "" when there is no telling where the data folder is.
[[nodiscard]] std::string replacedFolder(const Platform& platform);

/// What was begun and has not ended, where the bills are whole and what to do now, for a person; nothing when all is
/// well. While there is something, nobody should write.
[[nodiscard]] std::optional<std::string> unfinishedChange(const Platform& platform);

}  // namespace tallyvane::programs
