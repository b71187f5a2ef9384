// Putting the newest backup back, with one whole data folder at hand at every moment. Under the programs' lock.
#pragma once

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// Replaces the data folder by the newest backup, which stays. The replaced folder is kept until that has worked, and
/// put back if it does not; the one that an interrupted restore kept is kept on. Nothing is touched without a complete
/// backup or without room for the copy.
Result<> restoreNewestBackup(const Platform& platform);

/// Puts the folder back that an interrupted restore kept, in place of what stands there now.
Result<> putReplacedFolderBack(const Platform& platform);

}  // namespace tallyvane::programs
