#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane::agent {

/// Files of one folder that matter. The folder need not be there: that it appears, goes or is replaced matters too.
struct WatchedFolder {
  std::string path;  ///< absolute
  std::function<bool(std::string_view name)> matters;
};

/// Tells when files change, by a descriptor that is readable then. Changes are those of a folder's list of names and of
/// files that a writer has closed.
class FileWatch {
 public:
  /// Throws std::system_error when the system has no watch to give.
  FileWatch();
  [[nodiscard]] int descriptor() const { return file_.number(); }

  /// From now on these and no others. Folders that appeared since the last call are only watched from this one on, so
  /// call it after each change, and look at the files after it.
  void watch(const std::vector<WatchedFolder>& folders);
  /// Takes note of all changes so far; whether one of them matters.
  [[nodiscard]] bool takeChanges();

 private:
  using Matters = std::function<bool(std::string_view name)>;
  [[nodiscard]] bool add(const std::string& path, std::uint32_t events, const Matters& matters);
  void watchWayTo(const std::string& path, bool isThere);
  [[nodiscard]] bool matters(int watch, std::uint32_t events, std::string_view name) const;

  FileDescriptor file_;
  std::multimap<int, Matters> watches_;
};

}  // namespace tallyvane::agent
