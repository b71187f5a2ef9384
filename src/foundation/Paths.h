// Texts of paths; nothing here looks at a file.
#pragma once

#include <string>
#include <string_view>

namespace tallyvane {

[[nodiscard]] inline std::string withoutTrailingSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

/// The folder of what a path without a slash at its end names; "" when it has no slash at all.
[[nodiscard]] inline std::string parentOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return {};
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// The last component of a path without a slash at its end.
[[nodiscard]] inline std::string nameOf(std::string_view path) { return std::string(path.substr(path.rfind('/') + 1)); }

/// With one slash between the two, also below the root folder.
[[nodiscard]] inline std::string joined(const std::string& folder, std::string_view rest) {
  return (folder.ends_with('/') ? folder : folder + "/") + std::string(rest);
}

}  // namespace tallyvane
