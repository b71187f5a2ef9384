// Notifications in memory and in a property list, for the contract of their port.
#pragma once

#include "freedesktop/PlistNotificationCenter.h"
#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct NotificationsInMemory {
  FakeNotificationCenter center;
};

struct NotificationsOnDisk {
  TemporaryFolder folder;
  PosixFileStore files{folder.path};
  FakeRandom random;
  RecordingLog log;
  std::string path = folder.path + "/state/notifications.plist";
  PlistNotificationCenter center = over(files);

  PlistNotificationCenter over(FileStore& store) { return {path, store, random, log}; }
};

inline UserNotification reminderOf(const std::string& bid, Date at) {
  return {"", "Pay " + bid, "Bill is due on <b>&", "View", true, Dictionary{{"Bid", bid}}, "default", at};
}

inline std::vector<std::string> titlesOf(const std::vector<UserNotification>& notifications) {
  std::vector<std::string> titles;
  for (const UserNotification& notification : notifications) titles.push_back(notification.title);
  return titles;
}

}  // namespace tallyvane::testing
