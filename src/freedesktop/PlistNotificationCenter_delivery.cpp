#include <algorithm>

#include "freedesktop/NotificationRecords.h"
#include "freedesktop/PlistNotificationCenter.h"

namespace tallyvane {

namespace {

using namespace notifications;

constexpr std::string_view Service = "Service";
constexpr std::string_view Number = "Number";
constexpr std::string_view ShownDate = "ShownDate";
constexpr std::chrono::days remembered{400};

bool isDue(const Dictionary& record, Date now) { return record.valueOr(DeliveryDate, distantFuture) <= now; }

bool hasOccasion(const Dictionary& content, std::string_view list, const Dictionary& record) {
  const auto records = recordsIn(content, list);
  return std::any_of(records.begin(), records.end(),
                     [&](const Dictionary* other) { return sameOccasion(*other, record); });
}

ShownId shownIdOf(const Dictionary& record) {
  return {record.valueOr(Service, std::string()), static_cast<std::uint32_t>(record.valueOr(Number, std::int64_t{0}))};
}

/// Moves the scheduled ones for which that holds to the delivered; whether there were any.
template <typename Condition>
bool deliverThose(Dictionary& content, const Condition& holds) {
  Array& scheduled = listIn(content, Scheduled);
  const auto first = std::stable_partition(scheduled.begin(), scheduled.end(), [&](const Value& element) {
    const auto* record = element.get<Dictionary>();
    return record == nullptr || !holds(*record);
  });
  Array moved(first, scheduled.end());
  scheduled.erase(first, scheduled.end());
  for (Value& record : moved) listIn(content, Delivered).push_back(std::move(record));
  return !moved.empty();
}

void forgetOld(Dictionary& content, Date now) {
  std::erase_if(listIn(content, Shown), [&](const Value& element) {
    const auto* record = element.get<Dictionary>();
    return record == nullptr || record->valueOr(ShownDate, distantPast) < now - remembered;
  });
}

}  // namespace

Result<std::vector<UserNotification>> PlistNotificationCenter::takeDue(Date now) {
  const Result<> delivered = list_.change([&](Dictionary& content) {
    const Dictionary before = content;
    return deliverThose(
        content, [&](const Dictionary& record) { return isDue(record, now) && hasOccasion(before, Shown, record); });
  });
  if (!delivered) return Error{delivered.error()};
  std::vector<const Dictionary*> due;
  for (const Dictionary* record : recordsIn(list_.content(), Scheduled)) {
    const auto isSame = [&](const Dictionary* other) { return sameOccasion(*other, *record); };
    if (isDue(*record, now) && std::none_of(due.begin(), due.end(), isSame)) due.push_back(record);
  }
  std::vector<UserNotification> found;
  for (const Dictionary* record : due) found.push_back(notificationOf(*record));
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.deliveryDate < b.deliveryDate; });
  return found;
}

std::optional<Date> PlistNotificationCenter::nextAfter(Date moment) {
  std::optional<Date> next;
  for (const Dictionary* record : recordsIn(list_.content(), Scheduled)) {
    const Date date = record->valueOr(DeliveryDate, distantFuture);
    if (date > moment && (!next || date < *next)) next = date;
  }
  return next;
}

Result<> PlistNotificationCenter::noteShown(const UserNotification& notification, const ShownId& shown, Date now) {
  const Dictionary record = recordOf(notification);
  return list_.change([&](Dictionary& content) {
    forgetOld(content, now);
    deliverThose(content, [&](const Dictionary& other) { return sameOccasion(other, record); });
    Dictionary entry;
    entry.set(UserInfo, notification.userInfo);
    entry.set(DeliveryDate, record.valueOr(DeliveryDate, distantFuture));
    entry.set(Service, shown.service);
    entry.set(Number, std::int64_t{shown.number});
    entry.set(ShownDate, Date(std::chrono::floor<std::chrono::seconds>(now)));
    listIn(content, Shown).emplace_back(std::move(entry));
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
