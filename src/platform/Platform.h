// The services of the desktop that the model is given.
#pragma once

#include "foundation/Region.h"
#include "platform/Application.h"
#include "platform/Bookmarks.h"
#include "platform/CalendarStore.h"
#include "platform/Clock.h"
#include "platform/FileStore.h"
#include "platform/HttpTransport.h"
#include "platform/KeyValueStore.h"
#include "platform/Log.h"
#include "platform/MailSettings.h"
#include "platform/MainQueue.h"
#include "platform/MimeTypes.h"
#include "platform/Random.h"
#include "platform/Resources.h"
#include "platform/StatusBar.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "platform/WorkQueue.h"
#include "platform/Workspace.h"

namespace tallyvane {

/// References, not owned: whoever made them outlives the model. A pointer is null where the service does not exist. All
/// are used from the main thread unless their own comment says otherwise.
struct Platform {
  Clock& clock;
  const Region& region;
  Random& random;
  FileStore& files;
  Resources& resources;
  Bookmarks& bookmarks;
  UserDefaults& defaults;
  UserDefaults* groupDefaults;
  KeyValueStore& cloud;
  CalendarStore& calendars;
  UserNotificationCenter* notifications;
  Workspace& workspace;
  Application& application;
  StatusBar& statusBar;
  HttpTransport& http;
  WorkQueue& workQueue;
  MainQueue& mainQueue;
  MimeTypes& mimeTypes;
  MailSettings& mail;
  Log& log;

  /// The same with another log, which outlives it.
  [[nodiscard]] Platform loggingTo(Log& other) const {
    return {clock,         region,    random,    files,         resources, bookmarks,   defaults,
            groupDefaults, cloud,     calendars, notifications, workspace, application, statusBar,
            http,          workQueue, mainQueue, mimeTypes,     mail,      other};
  }
};

}  // namespace tallyvane
