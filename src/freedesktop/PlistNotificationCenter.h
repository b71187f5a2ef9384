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
/// however often it is removed and scheduled again and whenever the program ends that delivers: it counts as shown from
/// before a service is asked to show it, until the service refuses. What was shown is remembered for 400 days after. An
/// occasion that is over an hour late and was shown less than 18 hours before or after its date is the same one, at
/// the time that it has in another zone or since the user chose another.
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
  Result<> changeTogether(const std::function<void()>& changes) override { return list_.changeTogether(changes); }

  // 2 Delivering, for the one program that does.

  /// Whether anything scheduled is to be shown now.
  [[nodiscard]] bool isAnyDue(Date now);
  /// Counts all that is due as delivered, and gives what is to be shown now: one for each occasion that was not shown
  /// before, the earliest first. Who takes them shows them, or puts them back.
  [[nodiscard]] Result<std::vector<UserNotification>> takeDue(Date now);
  /// When something is due next, later than that moment; nothing when nothing will be.
  [[nodiscard]] std::optional<Date> nextAfter(Date moment);
  /// A service shows what was taken.
  Result<> noteShown(const UserNotification& notification, const ShownId& shown);
  /// What was taken could not be shown: it and all others of its occasion that are still there are scheduled again, and
  /// due from `again` on.
  Result<> putBack(const UserNotification& notification, Date again);
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
