#pragma once

#include <optional>
#include <string>

#include "foundation/Value.h"

namespace tallyvane {

/// Lasting references to folders that the user chose, kept as data among the settings.
class Bookmarks {
 public:
  virtual ~Bookmarks() = default;
  /// A bookmark of the folder at this absolute path; the folder need not exist.
  [[nodiscard]] virtual Data bookmark(const std::string& path) = 0;
  /// The bookmarked folder's path, without a slash at its end; nothing when the data are not a bookmark. Whether the
  /// folder is there is not looked at.
  [[nodiscard]] virtual std::optional<std::string> resolve(const Data& bookmark) = 0;
  /// The folder may be used from now on. Needed before its files are touched; never ended.
  virtual void startAccessing(const std::string& path) = 0;
};

}  // namespace tallyvane
