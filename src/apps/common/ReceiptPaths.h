#pragma once

#include <string>

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// Payments name their receipts by full paths. Where one names a file elsewhere while a receipt of that name is in this
/// data folder, it names that one from now on, in the bill's file and where the bill is mirrored. The first save that
/// fails ends it; what is done stays right, and it may be run again.
Result<> haveReceiptsFollow(const Platform& platform, const std::string& folder);

}  // namespace tallyvane::programs
