#include "helper/LoginHelper.h"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "freedesktop/NoServices.h"
#include "freedesktop/PosixFileStore.h"
#include "freedesktop/SessionEnvironment.h"
#include "freedesktop/SessionWorkspace.h"
#include "helper/QMAppDelegate.h"

namespace tallyvane::helper {

namespace {

/// The delegate does not look at what opening a URL came to, so that it is logged here. A bus that has not told in time
/// what runs is not asked for more.
class LoggedWorkspace : public Workspace {
 public:
  LoggedWorkspace(Workspace& workspace, Log& log, std::chrono::milliseconds limit)
      : workspace_(workspace), log_(log), deadline_(std::chrono::steady_clock::now() + limit) {}

  [[nodiscard]] std::vector<std::string> runningApplications() override { return workspace_.runningApplications(); }
  Result<> openUrl(const std::string& url) override {
    const bool isLate = std::chrono::steady_clock::now() >= deadline_;
    const Result<> opened = isLate ? Error{"the session bus does not answer"} : workspace_.openUrl(url);
    if (!opened) log_.diagnostic("Cannot open " + url + ": " + opened.error());
    return opened;
  }

 private:
  Workspace& workspace_;
  Log& log_;
  const std::chrono::steady_clock::time_point deadline_;
};

/// Ends the process when it is not dropped in time.
class Watchdog {
 public:
  explicit Watchdog(std::chrono::milliseconds limit) {
    std::signal(SIGALRM, endProcess);
    setTimer(limit);
  }
  ~Watchdog() { setTimer(std::chrono::milliseconds{0}); }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

 private:
  /// Only what a signal handler may do.
  static void endProcess(int /*signal*/) {
    constexpr std::string_view reason = "tallyvane-helper: the session bus does not answer\n";
    if (::write(STDERR_FILENO, reason.data(), reason.size()) < 0) ::_exit(0);
    ::_exit(0);
  }
  static void setTimer(std::chrono::milliseconds time) {
    itimerval timer{};
    timer.it_value.tv_sec = time.count() / 1000;
    timer.it_value.tv_usec = time.count() % 1000 * 1000;
    ::setitimer(ITIMER_REAL, &timer, nullptr);
  }
};

void openBus(SessionBus& bus, std::chrono::milliseconds limit) {
  const Watchdog watchdog(limit);
  // Without a bus the workspace says so when it is asked what runs.
  (void)bus.connection();
}

}  // namespace

void runLoginHelper(const Environment& environment, Log& log, std::chrono::milliseconds limit) {
  SessionEnvironment session = SessionEnvironment::of(environment);
  SessionBus bus(session.busAddress, limit);
  openBus(bus, limit);
  PosixFileStore files(XdgFolders::of(environment).dataHome);
  SessionWorkspace sessionWorkspace(bus, files, std::move(session), log);
  LoggedWorkspace workspace(sessionWorkspace, log, limit);
  NoApplication application;
  QMAppDelegate(workspace, application).applicationDidFinishLaunching();
}

}  // namespace tallyvane::helper
