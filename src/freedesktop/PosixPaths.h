// What the parts of PosixFileStore share about paths.
#pragma once

#include <optional>
#include <string>

#include "foundation/Result.h"

namespace tallyvane {

/// Why a path may not be used: it is empty or relative, or the system would cut it short at a null byte.
[[nodiscard]] inline std::optional<Error> refusal(const std::string& path) {
  if (path.starts_with('/') && path.find('\0') == std::string::npos) return std::nullopt;
  return Error{"'" + path + "': not an absolute path"};
}

/// Without slashes at its end, which would make a symbolic link stand for what it names.
[[nodiscard]] inline std::string withoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

/// Of an absolute path.
[[nodiscard]] inline std::string parentOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}
[[nodiscard]] inline std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace tallyvane
