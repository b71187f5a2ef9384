#pragma once

#include "platform/Platform.h"

namespace tallyvane::programs {

/// Rebuilds the calendar event and the notification of every active bill that asks for reminders, from the bill's own
/// file and in the order of the index. A bill's notifications are removed by its identifier first: the model schedules
/// a further one at each pass. Reminders of bills that no longer ask for any stay as they are. To be called under the
/// programs' lock.
void runReminderPass(const Platform& platform);

}  // namespace tallyvane::programs
