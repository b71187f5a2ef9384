#include "agent/Deliveries.h"

#include <algorithm>
#include <utility>

namespace tallyvane::agent {

namespace {

bool sameOccasion(const UserNotification& left, const UserNotification& right) {
  return left.deliveryDate == right.deliveryDate && left.userInfo == right.userInfo;
}

}  // namespace

Deliveries::Deliveries(sdbus::IConnection& connection, Needs needs, Log& log)
    : needs_(std::move(needs)),
      log_(log),
      service_(connection, {[this] { needs_.appeared(); },
                            [this](const ShownId& shown) {
                              const auto userInfo = needs_.center().userInfoOf(shown);
                              if (userInfo) needs_.viewed(*userInfo);
                            }}) {}

void Deliveries::deliver(Date now) {
  const auto due = needs_.center().takeDue(now);
  if (!due) return note(Error{due.error()});
  for (const UserNotification& notification : *due) {
    if (!isOnItsWay(notification)) show(notification);
  }
  closeWithdrawn();
}

void Deliveries::show(const UserNotification& notification) {
  onTheirWay_.push_back(notification);
  service_.show(notification, [this, notification](const Result<ShownId>& answer) { shown(notification, answer); });
}

void Deliveries::shown(const UserNotification& notification, const Result<ShownId>& shown) {
  std::erase_if(onTheirWay_, [&](const auto& other) { return sameOccasion(other, notification); });
  if (!shown) {
    if (!saidWaiting_) log_.diagnostic("Notifications wait until a service shows them: " + shown.error());
    saidWaiting_ = true;
    return;
  }
  saidWaiting_ = false;
  note(needs_.center().noteShown(notification, *shown, needs_.now()));
  closeWithdrawn();  // it may have been removed while the service was asked
}

void Deliveries::closeWithdrawn() {
  if (service_.current().empty()) return;
  for (const ShownId& shown : needs_.center().withdrawn(service_.current())) {
    service_.close(shown);
    note(needs_.center().noteClosed(shown));
  }
}

bool Deliveries::isOnItsWay(const UserNotification& notification) const {
  return std::any_of(onTheirWay_.begin(), onTheirWay_.end(),
                     [&](const auto& other) { return sameOccasion(other, notification); });
}

void Deliveries::note(const Result<>& outcome) {
  if (!outcome) log_.diagnostic("The list of notifications could not be changed: " + outcome.error());
}

}  // namespace tallyvane::agent
