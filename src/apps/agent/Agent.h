#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "agent/ApplicationObject.h"
#include "agent/DailyBackups.h"
#include "agent/EventLoop.h"
#include "agent/FileWatch.h"
#include "agent/MailRounds.h"
#include "agent/MenuChoices.h"
#include "agent/Reminders.h"
#include "agent/Signals.h"
#include "agent/Timers.h"
#include "common/DesktopPlatform.h"
#include "freedesktop/SessionWorkspace.h"
#include "freedesktop/StatusNotifierBar.h"
#include "freedesktop/SystemClock.h"
#include "helper/QMHelperMenulet.h"
#include "platform/Application.h"

namespace tallyvane::agent {

/// What the agent is told about where it runs. The region is asked anew whenever it may have changed.
struct Surroundings {
  XdgFolders folders;
  SessionEnvironment session;
  std::function<Region()> region;
  std::string executable;  ///< absolute path of the agent's own program
};

/// The resident part of the main application: one thread that sleeps until something happens. It hosts the status menu
/// and keeps it and the widget's numbers true: from its start on, after a change of the data or of the user's settings,
/// at midnight, and after a change of the clock or the time zone; then it also sees to the daily backup. It makes
/// reminders happen, see Reminders.
class Agent : public Application {
 public:
  /// The open connection and the log outlive it.
  Agent(SessionBus& bus, sdbus::IConnection& connection, Surroundings surroundings, Log& log);

  /// False when the application runs already; then `run` must not be called.
  [[nodiscard]] bool becomesTheOne() { return object_.takeName(); }
  /// Returns when a signal asks for the end or the bus is gone.
  void run();

  void terminate() override { loop_.end(); }

 private:
  /// Made anew when the region changes.
  struct Hosted {
    std::unique_ptr<programs::DesktopPlatform> desktop;
    std::unique_ptr<QMHelperMenulet> menulet;
  };

  void endOfTurn();
  void runLoop();
  void refresh();
  void feed();
  void followRegion();
  void watchFiles();
  void waitForMidnight();
  void offerImport();
  void showBill(const std::string& bid);
  [[nodiscard]] const Platform& platform() const { return hosted_.desktop->platform(); }

  const Surroundings surroundings_;
  Log& log_;
  SystemClock clock_;
  Signals signals_;
  FileWatch fileWatch_;
  DelayTimer settling_;
  WallClockTimer midnight_;
  PosixFileStore files_;
  InstalledResources resources_;
  QueuedMainQueue queue_;
  SessionWorkspace workspace_;
  MenuChoices choices_;
  StatusNotifierBar statusBar_;
  ApplicationObject object_;
  EventLoop loop_;
  Hosted hosted_;
  Reminders reminders_;
  MailRounds mail_;
  DailyBackups backups_;
  bool offeredImport_ = false;
};

}  // namespace tallyvane::agent
