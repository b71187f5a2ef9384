#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "freedesktop/DesktopEntries.h"
#include "freedesktop/SessionBus.h"
#include "freedesktop/SessionEnvironment.h"
#include "platform/FileStore.h"
#include "platform/Log.h"
#include "platform/Workspace.h"

namespace sdbus {
class IProxy;
}

namespace tallyvane {

/// The programs of the user's session: a running application is an owned name on the session bus, and a URL is opened
/// by the desktop entry that claims its scheme, over the bus where the entry allows that, else as a program of its own.
class SessionWorkspace : public Workspace {
 public:
  SessionWorkspace(SessionBus& bus, FileStore& files, SessionEnvironment environment, Log& log);
  ~SessionWorkspace() override;
  SessionWorkspace(const SessionWorkspace&) = delete;
  SessionWorkspace& operator=(const SessionWorkspace&) = delete;

  [[nodiscard]] std::vector<std::string> runningApplications() override;
  /// Over the bus it waits for the application's reply, at most the bus's limit; a program is only started.
  Result<> openUrl(const std::string& url) override;
  /// The same without waiting: tells what came of it once, at once or from the connection's loop; not after this is
  /// destroyed.
  using Opened = std::function<void(const Result<>& opened)>;
  void startOpeningUrl(const std::string& url, Opened opened);

 private:
  /// A call that may not have been answered yet.
  struct Asked {
    std::unique_ptr<sdbus::IProxy> application;
    bool answered = false;
  };

  Result<DesktopEntry> handlerOf(const std::string& url);
  Result<> activate(const DesktopEntry& entry, const std::string& url);
  Result<> startActivating(const DesktopEntry& entry, const std::string& url, const Opened& opened);
  Result<> run(const DesktopEntry& entry, const std::string& url);

  SessionBus& bus_;
  FileStore& files_;
  SessionEnvironment environment_;
  Log& log_;
  std::list<Asked> asked_;
};

}  // namespace tallyvane
