#pragma once

#include <string>

#include "foundation/Result.h"
#include "platform/FileStore.h"
#include "platform/Log.h"

namespace tallyvane {

/// Before a file that nobody can read is replaced: copies it to the first free one of "PATH.unreadable-1",
/// "PATH.unreadable-2", … and names the copy in a diagnostic. A copy that is there already serves again. Only when this
/// succeeds may the file be replaced.
Result<> setAside(FileStore& files, Log& log, const std::string& path);

}  // namespace tallyvane
