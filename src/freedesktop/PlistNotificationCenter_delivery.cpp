#include <algorithm>

#include "freedesktop/NotificationRecords.h"
#include "freedesktop/PlistNotificationCenter.h"

namespace tallyvane {

namespace {

using namespace notifications;

constexpr std::string_view Service = "Service";
constexpr std::string_view Number = "Number";
constexpr std::string_view ShownDate = "ShownDate";
constexpr std::string_view NotBefore = "NotBefore";  ///< of what a service would not show
constexpr std::chrono::days remembered{400};

Date dueDateOf(const Dictionary& record) {
  return std::max(record.valueOr(DeliveryDate, distantFuture), record.valueOr(NotBefore, distantPast));
}

bool isDue(const Dictionary& record, Date now) { return dueDateOf(record) <= now; }

bool hasOccasion(const Dictionary& content, std::string_view list, const Dictionary& record) {
  const auto records = recordsIn(content, list);
  return std::any_of(records.begin(), records.end(),
                     [&](const Dictionary* other) { return sameOccasion(*other, record); });
}

ShownId shownIdOf(const Dictionary& record) {
  return {record.valueOr(Service, std::string()), static_cast<std::uint32_t>(record.valueOr(Number, std::int64_t{0}))};
}

/// Moves the records for which that holds from one list to the end of another, and gives them.
template <typename Condition>
std::vector<Dictionary> moveThose(Dictionary& content, std::string_view from, std::string_view to,
                                  const Condition& holds) {
  std::vector<Dictionary> moved;
  Array kept;
  for (Value& element : listIn(content, from)) {
    auto* record = element.get<Dictionary>();
    if (record != nullptr && holds(*record)) {
      moved.push_back(std::move(*record));
    } else {
      kept.push_back(std::move(element));
    }
  }
  listIn(content, from) = std::move(kept);
  for (const Dictionary& record : moved) listIn(content, to).emplace_back(record);
  return moved;
}

void forgetOld(Dictionary& content, Date now) {
  std::erase_if(listIn(content, Shown), [&](const Value& element) {
    const auto* record = element.get<Dictionary>();
    return record == nullptr || record->valueOr(ShownDate, distantPast) < now - remembered;
  });
}

/// Whether both are the same reminder, the other one late because its time was changed: by another reminder time, or by
/// another time zone. What repeats daily is farther apart, also on the day of a clock change.
bool isSameAtAnotherTime(const Dictionary& shown, const Dictionary& record) {
  constexpr std::chrono::hours apart{18};
  const auto distance = shown.valueOr(DeliveryDate, distantPast) - record.valueOr(DeliveryDate, distantFuture);
  return shown.valueOr(UserInfo, Dictionary()) == record.valueOr(UserInfo, Dictionary()) && distance < apart &&
         distance > -apart;
}

/// Whether the occasion was shown. One whose time has passed while it was shown for another time is moved to this one.
bool wasShown(Dictionary& content, const Dictionary& record, Date now) {
  constexpr std::chrono::hours late{1};
  if (hasOccasion(content, Shown, record)) return true;
  if (dueDateOf(record) > now - late) return false;
  for (Value& element : listIn(content, Shown)) {
    auto* shown = element.get<Dictionary>();
    if (shown == nullptr || !isSameAtAnotherTime(*shown, record)) continue;
    shown->set(DeliveryDate, record.valueOr(DeliveryDate, distantFuture));
    return true;
  }
  return false;
}

Dictionary shownRecordOf(const Dictionary& record, Date now) {
  Dictionary shown;
  shown.set(UserInfo, record.valueOr(UserInfo, Dictionary()));
  shown.set(DeliveryDate, record.valueOr(DeliveryDate, distantFuture));
  shown.set(ShownDate, Date(std::chrono::floor<std::chrono::seconds>(now)));
  return shown;
}

}  // namespace

bool PlistNotificationCenter::isAnyDue(Date now) {
  const auto scheduled = recordsIn(list_.content(), Scheduled);
  return std::any_of(scheduled.begin(), scheduled.end(), [&](const Dictionary* record) { return isDue(*record, now); });
}

Result<std::vector<UserNotification>> PlistNotificationCenter::takeDue(Date now) {
  std::vector<UserNotification> found;
  const Result<> taken = list_.change([&](Dictionary& content) {
    found.clear();
    const auto due = moveThose(content, Scheduled, Delivered, [&](const auto& record) { return isDue(record, now); });
    if (due.empty()) return false;
    forgetOld(content, now);
    for (const Dictionary& record : due) {
      if (wasShown(content, record, now)) continue;
      listIn(content, Shown).emplace_back(shownRecordOf(record, now));
      found.push_back(notificationOf(record));
    }
    return true;
  });
  if (!taken) return Error{taken.error()};
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.deliveryDate < b.deliveryDate; });
  return found;
}

std::optional<Date> PlistNotificationCenter::nextAfter(Date moment) {
  std::optional<Date> next;
  for (const Dictionary* record : recordsIn(list_.content(), Scheduled)) {
    const Date date = dueDateOf(*record);
    if (date > moment && (!next || date < *next)) next = date;
  }
  return next;
}

Result<> PlistNotificationCenter::noteShown(const UserNotification& notification, const ShownId& shown) {
  const Dictionary occasion = recordOf(notification);
  return list_.change([&](Dictionary& content) {
    bool found = false;
    for (Value& element : listIn(content, Shown)) {
      auto* record = element.get<Dictionary>();
      if (record == nullptr || !sameOccasion(*record, occasion)) continue;
      record->set(Service, shown.service);
      record->set(Number, std::int64_t{shown.number});
      found = true;
    }
    return found;
  });
}

Result<> PlistNotificationCenter::putBack(const UserNotification& notification, Date again) {
  const Dictionary occasion = recordOf(notification);
  const auto isOfIt = [&](const Dictionary& record) { return sameOccasion(record, occasion); };
  return list_.change([&](Dictionary& content) {
    std::erase_if(listIn(content, Shown), [&](const Value& element) {
      const auto* record = element.get<Dictionary>();
      return record != nullptr && isOfIt(*record);
    });
    (void)moveThose(content, Delivered, Scheduled, isOfIt);
    for (Value& element : listIn(content, Scheduled)) {
      auto* record = element.get<Dictionary>();
      if (record != nullptr && isOfIt(*record)) record->set(NotBefore, again);
    }
    return true;
  });
}

std::vector<ShownId> PlistNotificationCenter::withdrawn(const std::string& service) {
  const Dictionary& content = list_.content();
  std::vector<ShownId> found;
  for (const Dictionary* record : recordsIn(content, Shown)) {
    const ShownId shown = shownIdOf(*record);
    if (shown.service == service && !hasOccasion(content, Delivered, *record)) found.push_back(shown);
  }
  return found;
}

Result<> PlistNotificationCenter::noteClosed(const ShownId& shown) {
  return list_.change([&](Dictionary& content) {
    bool found = false;
    for (Value& element : listIn(content, Shown)) {
      auto* record = element.get<Dictionary>();
      if (record == nullptr || !(shownIdOf(*record) == shown)) continue;
      found = record->erase(Service) || found;
    }
    return found;
  });
}

std::optional<Dictionary> PlistNotificationCenter::userInfoOf(const ShownId& shown) {
  for (const Dictionary* record : recordsIn(list_.content(), Shown)) {
    if (shownIdOf(*record) == shown) return record->valueOr(UserInfo, Dictionary());
  }
  return std::nullopt;
}

}  // namespace tallyvane
