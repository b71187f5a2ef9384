// Notifications as dictionaries of a property list; shared by the parts of PlistNotificationCenter.
#pragma once

#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "platform/UserNotificationCenter.h"

namespace tallyvane::notifications {

inline constexpr std::string_view Scheduled = "Scheduled";
inline constexpr std::string_view Delivered = "Delivered";
inline constexpr std::string_view Shown = "Shown";

inline constexpr std::string_view Identifier = "Identifier";
inline constexpr std::string_view UserInfo = "UserInfo";
inline constexpr std::string_view DeliveryDate = "DeliveryDate";

[[nodiscard]] Dictionary recordOf(const UserNotification& notification);
[[nodiscard]] UserNotification notificationOf(const Dictionary& record);

/// The dictionaries of one of the lists; other elements are passed over.
[[nodiscard]] std::vector<const Dictionary*> recordsIn(const Dictionary& content, std::string_view list);
/// A list that may be changed in place; made when it is not there.
[[nodiscard]] Array& listIn(Dictionary& content, std::string_view list);

/// Whether two records are of the same occasion.
[[nodiscard]] bool sameOccasion(const Dictionary& left, const Dictionary& right);

}  // namespace tallyvane::notifications
