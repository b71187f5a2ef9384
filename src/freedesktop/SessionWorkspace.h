#pragma once

#include <string>
#include <vector>

#include "freedesktop/DesktopEntries.h"
#include "freedesktop/SessionBus.h"
#include "freedesktop/SessionEnvironment.h"
#include "platform/FileStore.h"
#include "platform/Log.h"
#include "platform/Workspace.h"

namespace tallyvane {

/// The programs of the user's session: a running application is an owned name on the session bus, and a URL is opened
/// by the desktop entry that claims its scheme, over the bus where the entry allows that, else as a program of its own.
class SessionWorkspace : public Workspace {
 public:
  SessionWorkspace(SessionBus& bus, FileStore& files, SessionEnvironment environment, Log& log)
      : bus_(bus), files_(files), environment_(std::move(environment)), log_(log) {}

  [[nodiscard]] std::vector<std::string> runningApplications() override;
  /// Over the bus it waits for the application's reply, at most the bus's limit; a program is only started.
  Result<> openUrl(const std::string& url) override;

 private:
  Result<> activate(const DesktopEntry& entry, const std::string& url);
  Result<> run(const DesktopEntry& entry, const std::string& url);

  SessionBus& bus_;
  FileStore& files_;
  SessionEnvironment environment_;
  Log& log_;
};

}  // namespace tallyvane
