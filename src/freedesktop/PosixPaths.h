// What the parts of PosixFileStore share about paths.
#pragma once

#include <optional>
#include <string>

#include "foundation/Paths.h"
#include "foundation/Result.h"

namespace tallyvane {

/// Why a path may not be used: it is empty or relative, or the system would cut it short at a null byte.
[[nodiscard]] inline std::optional<Error> refusal(const std::string& path) {
  if (path.starts_with('/') && path.find('\0') == std::string::npos) return std::nullopt;
  return Error{"'" + path + "': not an absolute path"};
}

}  // namespace tallyvane
