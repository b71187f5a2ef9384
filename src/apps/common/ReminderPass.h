#pragma once

#include <functional>
#include <string>

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// Calls back with each active bill that asks for reminders, as in its own file and in the order of the index, one at a
/// time: payments and notes of all of them would take room that nobody needs.
void forEachBillToRemindOf(const Platform& platform, const std::function<void(const Dictionary& bill)>& visit);

/// Rebuilds the calendar event and the notification of every bill that asks for reminders. A bill's notifications are
/// removed by its identifier first: the model schedules a further one at each pass. Reminders of bills that no longer
/// ask for any stay as they are. The lists of notifications are saved once, at the end; when that fails they are as
/// before, and the result says why. To be called under the programs' lock.
[[nodiscard]] Result<> runReminderPass(const Platform& platform);

}  // namespace tallyvane::programs
