// The daily backup, as every program makes it. Under the programs' lock.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

enum class BackupOutcome { made, madeEarlierToday };

/// Makes today's backup when none was made today and one can be made. A copy that fails costs the previous backup, so
/// that is looked at first: the data folder is there, its list of bills can be read and the copy has room. The error is
/// a sentence for a person.
Result<BackupOutcome> backUpToday(const Platform& platform);

/// Whether what is recorded as today's backup was made today; it need not be there.
[[nodiscard]] bool isBackedUpToday(const Platform& platform);

/// A size in the unit that fits it, "3.4 MB".
[[nodiscard]] std::string sizeText(std::uint64_t bytes);

}  // namespace tallyvane::programs
