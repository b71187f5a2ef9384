#pragma once

#include "common/GuardedFileStore.h"
#include "common/ProgramPaths.h"
#include "freedesktop/FileBookmarks.h"
#include "freedesktop/FolderCalendarStore.h"
#include "freedesktop/InstalledMailSettings.h"
#include "freedesktop/InstalledResources.h"
#include "freedesktop/LoadedHttpTransport.h"
#include "freedesktop/LocalKeyValueStore.h"
#include "freedesktop/NoServices.h"
#include "freedesktop/PlistNotificationCenter.h"
#include "freedesktop/PlistUserDefaults.h"
#include "freedesktop/PosixFileStore.h"
#include "freedesktop/QueuedMainQueue.h"
#include "freedesktop/SharedMimeTypes.h"
#include "freedesktop/SystemRandom.h"
#include "freedesktop/ThreadWorkQueue.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// The services of a Linux desktop, put together for one program. It owns all of them but those that its constructor
/// takes, which must outlive it. Making it reads and writes no file.
///
/// The model's files go through the guard; settings and the mirror do not: they have locks of their own, and putting
/// back a whole file of settings would undo what another program set meanwhile.
class DesktopPlatform {
 public:
  DesktopPlatform(const XdgFolders& folders, Region region, Clock& clock, Log& log, Workspace& workspace,
                  StatusBar& statusBar, Application& application);
  ~DesktopPlatform() { endRequests(); }
  DesktopPlatform(const DesktopPlatform&) = delete;
  DesktopPlatform& operator=(const DesktopPlatform&) = delete;

  [[nodiscard]] Platform& platform() { return platform_; }
  [[nodiscard]] const ProgramPaths& paths() const { return paths_; }
  [[nodiscard]] GuardedFileStore& files() { return guardedFiles_; }
  [[nodiscard]] PlistNotificationCenter& notifications() { return notifications_; }
  [[nodiscard]] QueuedMainQueue& mainQueue() { return mainQueue_; }
  /// Cancels the requests that still run and runs their callbacks, which put back what was not sent. None may be
  /// started from then on.
  void endRequests();

 private:
  [[nodiscard]] std::string calendarFolder();

  const ProgramPaths paths_;
  const Region region_;
  SystemRandom random_;
  PosixFileStore files_;
  GuardedFileStore guardedFiles_;
  InstalledResources resources_;
  FileBookmarks bookmarks_;
  PlistUserDefaults defaults_;
  PlistUserDefaults groupDefaults_;
  LocalKeyValueStore cloud_;
  FolderCalendarStore calendars_;
  PlistNotificationCenter notifications_;
  InstalledMailSettings mail_;
  LoadedHttpTransport http_;
  QueuedMainQueue mainQueue_;
  SharedMimeTypes mimeTypes_;
  ThreadWorkQueue workQueue_;
  Platform platform_;
};

/// The settings that a program starts with. The reminder time is nine o'clock in the region's zone.
[[nodiscard]] Dictionary firstValues(const Region& region);

}  // namespace tallyvane::programs
