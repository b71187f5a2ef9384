#include "agent/PassReasons.h"

#include "foundation/Calendar.h"
#include "storage/Keys.h"

namespace tallyvane::agent {

Dictionary PassReasons::reasonsOf(const Platform& platform) {
  Dictionary reasons;
  const CivilDay today = Calendar::of(platform.region).civilDay(platform.clock.now());
  reasons.set("today", std::int64_t{today.time_since_epoch().count()});
  reasons.set("locale", platform.region.locale);
  reasons.set("zone", platform.region.timeZone);
  for (const auto setting : {key::ReminderTime, key::ReminderEvents, key::EnableNotificationCenter, key::CalendarList,
                             key::ReminderCalendarNumber, key::CalendarFolder}) {
    if (auto value = platform.defaults.object(setting)) reasons.set(setting, std::move(*value));
  }
  return reasons;
}

}  // namespace tallyvane::agent
