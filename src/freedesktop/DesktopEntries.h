// Which installed application opens what, by the desktop's own files.
#pragma once

#include <optional>
#include <string>

#include "freedesktop/DesktopEntry.h"
#include "freedesktop/SessionEnvironment.h"
#include "platform/FileStore.h"

namespace tallyvane {

/// The applications installed in the session's data folders. Reads the files anew at each call. Both references
/// outlive it.
class DesktopEntries {
 public:
  DesktopEntries(FileStore& files, const SessionEnvironment& environment) : files_(files), environment_(environment) {}

  /// The application that opens URLs of this scheme (lower case): a default set in a mimeapps.list file, the user's
  /// before the system's; else the first that was added there or claims the scheme in its own entry, and was not
  /// removed. Entries that are not installed are passed over.
  [[nodiscard]] std::optional<DesktopEntry> handlerOfScheme(const std::string& scheme) const;
  /// The installed application with this identifier.
  [[nodiscard]] std::optional<DesktopEntry> entry(const std::string& id) const;

 private:
  [[nodiscard]] std::optional<DesktopEntry> entryIn(const std::string& folder, const std::string& id) const;
  [[nodiscard]] std::optional<DesktopEntry> firstInstalled(const std::vector<std::string>& ids) const;
  [[nodiscard]] std::vector<std::string> claimants(const std::string& folder, const std::string& type) const;

  FileStore& files_;
  const SessionEnvironment& environment_;
};

}  // namespace tallyvane
