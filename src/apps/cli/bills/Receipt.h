#pragma once

#include <string>

#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// Where a payment's receipt is. One whose path is gone is looked for by its name in the data folder, which may have
/// been moved.
struct Receipt {
  std::string path;  ///< "" when there is none
  bool isMissing = false;
};

[[nodiscard]] Receipt receiptOf(const Platform& platform, const Dictionary& payment);

}  // namespace tallyvane::cli
