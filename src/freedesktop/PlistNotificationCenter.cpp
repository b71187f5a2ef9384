#include "freedesktop/PlistNotificationCenter.h"

#include <fmt/format.h>

#include "freedesktop/NotificationRecords.h"

namespace tallyvane {

namespace notifications {

namespace {

constexpr std::string_view Title = "Title";
constexpr std::string_view Text = "Text";
constexpr std::string_view Action = "Action";
constexpr std::string_view HasAction = "HasAction";
constexpr std::string_view Sound = "Sound";

}  // namespace

Dictionary recordOf(const UserNotification& notification) {
  const auto entry = [](std::string_view name, Value value) { return Dictionary::Entry(name, std::move(value)); };
  return {entry(Identifier, notification.identifier),
          entry(Title, notification.title),
          entry(Text, notification.informativeText),
          entry(Action, notification.actionButtonTitle),
          entry(HasAction, notification.hasActionButton),
          entry(UserInfo, notification.userInfo),
          entry(Sound, notification.soundName),
          entry(DeliveryDate, Date(std::chrono::floor<std::chrono::seconds>(notification.deliveryDate)))};
}

UserNotification notificationOf(const Dictionary& record) {
  const auto text = [&](std::string_view name) { return record.valueOr(name, std::string()); };
  UserNotification notification;
  notification.identifier = text(Identifier);
  notification.title = text(Title);
  notification.informativeText = text(Text);
  notification.actionButtonTitle = text(Action);
  notification.hasActionButton = record.valueOr(HasAction, false);
  notification.userInfo = record.valueOr(UserInfo, Dictionary());
  notification.soundName = text(Sound);
  notification.deliveryDate = record.valueOr(DeliveryDate, distantFuture);
  return notification;
}

std::vector<const Dictionary*> recordsIn(const Dictionary& content, std::string_view list) {
  std::vector<const Dictionary*> records;
  const Array* elements = content.get<Array>(list);
  for (std::size_t i = 0; elements != nullptr && i < elements->size(); ++i) {
    if (const auto* record = (*elements)[i].get<Dictionary>()) records.push_back(record);
  }
  return records;
}

Array& listIn(Dictionary& content, std::string_view list) {
  if (content.get<Array>(list) == nullptr) content.set(list, Array());
  return *content.get<Array>(list);
}

bool sameOccasion(const Dictionary& left, const Dictionary& right) {
  return left.valueOr(DeliveryDate, distantFuture) == right.valueOr(DeliveryDate, distantFuture) &&
         left.valueOr(UserInfo, Dictionary()) == right.valueOr(UserInfo, Dictionary());
}

}  // namespace notifications

namespace {

std::vector<UserNotification> notificationsIn(const Dictionary& content, std::string_view list) {
  std::vector<UserNotification> found;
  for (const Dictionary* record : notifications::recordsIn(content, list)) {
    found.push_back(notifications::notificationOf(*record));
  }
  return found;
}

Result<> removeFrom(SharedPropertyList& lists, std::string_view list, const std::string& identifier) {
  return lists.change([&](Dictionary& content) {
    if (content.get<Array>(list) == nullptr) return false;
    return std::erase_if(*content.get<Array>(list), [&](const Value& element) {
             const auto* record = element.get<Dictionary>();
             return record != nullptr && record->valueOr(notifications::Identifier, std::string()) == identifier;
           }) > 0;
  });
}

}  // namespace

Result<> PlistNotificationCenter::schedule(const UserNotification& notification) {
  UserNotification scheduled = notification;
  scheduled.identifier.clear();
  for (const std::uint8_t byte : random_.bytes16()) scheduled.identifier += fmt::format("{:02X}", byte);
  return list_.change([&](Dictionary& content) {
    notifications::listIn(content, notifications::Scheduled).emplace_back(notifications::recordOf(scheduled));
    return true;
  });
}

std::vector<UserNotification> PlistNotificationCenter::delivered() {
  return notificationsIn(list_.content(), notifications::Delivered);
}

std::vector<UserNotification> PlistNotificationCenter::scheduled() {
  return notificationsIn(list_.content(), notifications::Scheduled);
}

Result<> PlistNotificationCenter::removeDelivered(const UserNotification& notification) {
  return removeFrom(list_, notifications::Delivered, notification.identifier);
}

Result<> PlistNotificationCenter::removeScheduled(const UserNotification& notification) {
  return removeFrom(list_, notifications::Scheduled, notification.identifier);
}

}  // namespace tallyvane
