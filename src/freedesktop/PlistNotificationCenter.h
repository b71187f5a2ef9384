// Scheduled and delivered notifications.
//
//   1 The port           PlistNotificationCenter.cpp
//   2 Delivering         PlistNotificationCenter_delivery.cpp
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "freedesktop/SharedPropertyList.h"
#include "platform/Random.h"
#include "platform/UserNotificationCenter.h"

namespace tallyvane {

/// What a notification service gave a notification that it shows.
struct ShownId {
  std::string service;  ///< which service, so that its numbers are not taken for those of a later one
  std::uint32_t number = 0;
  friend bool operator==(const ShownId&, const ShownId&) = default;
};

/// The desktop shows notifications but keeps no schedule and no list of those delivered, so both are kept here: in a
/// property list that all programs of the user share, changed under its lock. Any program schedules and removes; one
/// delivers. A notification that is due waits there until that one has shown it.
///
/// Two notifications with the same user info and delivery date are the same occasion. Each occasion is shown once,
/// however often it is removed and scheduled again: what was shown is remembered for a year after.
class PlistNotificationCenter : public UserNotificationCenter {
 public:
  /// All references outlive it.
  PlistNotificationCenter(std::string path, FileStore& files, Random& random, Log& log)
      : list_(std::move(path), files, log, Durability::synced), random_(random) {}

  // 1 The port. Lists come in the order in which they were added to.

  Result<> schedule(const UserNotification& notification) override;
  [[nodiscard]] std::vector<UserNotification> delivered() override;
  [[nodiscard]] std::vector<UserNotification> scheduled() override;
  Result<> removeDelivered(const UserNotification& notification) override;
  Result<> removeScheduled(const UserNotification& notification) override;

  // 2 Delivering, for the one program that does.

  /// The scheduled ones that are to be shown now, one for each occasion, the earliest first. Those of an occasion that
  /// was shown before count as delivered at once.
  [[nodiscard]] Result<std::vector<UserNotification>> takeDue(Date now);
  /// The next delivery date after that moment; nothing when none is scheduled.
  [[nodiscard]] std::optional<Date> nextAfter(Date moment);
  /// The notification has been shown: it and all others of its occasion count as delivered.
  Result<> noteShown(const UserNotification& notification, const ShownId& shown, Date now);
  /// Those that this service shows although they are no longer among the delivered.
  [[nodiscard]] std::vector<ShownId> withdrawn(const std::string& service);
  Result<> noteClosed(const ShownId& shown);
  /// The user info of what the service shows under this number.
  [[nodiscard]] std::optional<Dictionary> userInfoOf(const ShownId& shown);

 private:
  SharedPropertyList list_;
  Random& random_;
};

}  // namespace tallyvane
