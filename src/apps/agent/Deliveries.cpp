#include "agent/Deliveries.h"

#include <utility>

namespace tallyvane::agent {

namespace {

/// How long a service that refuses is left alone.
constexpr std::chrono::minutes respite{1};

}  // namespace

Deliveries::Deliveries(sdbus::IConnection& connection, Needs needs, Log& log)
    : needs_(std::move(needs)),
      log_(log),
      service_(connection, {[this] { needs_.again(); },
                            [this](const ShownId& shown) {
                              const auto userInfo = needs_.center().userInfoOf(shown);
                              if (userInfo) needs_.viewed(*userInfo);
                            }}) {}

Result<> Deliveries::deliver(Date now) {
  if (needs_.center().isAnyDue(now)) {
    if (service_.current().empty()) {
      startService();
      return {};
    }
    const auto due = needs_.center().takeDue(now);
    if (!due) return Error{due.error()};
    for (const UserNotification& notification : *due) show(notification);
  }
  closeWithdrawn();
  return {};
}

/// When it has started, the schedule is looked at again.
void Deliveries::startService() {
  service_.start([this](const Result<>& started) {
    if (!started) sayWaiting(started.error());
  });
}

void Deliveries::show(const UserNotification& notification) {
  service_.show(notification, [this, notification](const Result<ShownId>& answer) { shown(notification, answer); });
}

void Deliveries::shown(const UserNotification& notification, const Result<ShownId>& shown) {
  if (!shown) {
    sayWaiting(shown.error());
    return note(needs_.center().putBack(notification, needs_.now() + respite));
  }
  saidWaiting_ = false;
  note(needs_.center().noteShown(notification, *shown));
  needs_.again();  // it may have been removed while the service was asked
}

void Deliveries::closeWithdrawn() {
  if (service_.current().empty()) return;
  for (const ShownId& shown : needs_.center().withdrawn(service_.current())) {
    service_.close(shown);
    note(needs_.center().noteClosed(shown));
  }
}

void Deliveries::sayWaiting(const std::string& why) {
  if (!std::exchange(saidWaiting_, true)) log_.diagnostic("Notifications wait until a service shows them: " + why);
}

void Deliveries::note(const Result<>& outcome) {
  if (!outcome) log_.diagnostic("The list of notifications could not be changed: " + outcome.error());
}

}  // namespace tallyvane::agent
