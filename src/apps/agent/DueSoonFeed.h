#pragma once

#include "helper/QMHelperMenulet.h"
#include "platform/Platform.h"

namespace tallyvane::agent {

/// Lists the active bills and brings up to date what shows them: the menu, and in the group suite the widget's
/// snapshot, "NumberOfBillsDueSoon" and "NextBill" (the first bill that needs attention, as its file would hold it;
/// absent when none does). What could not be stored goes to the log.
void feedDueSoon(const Platform& platform, QMHelperMenulet& menulet);

}  // namespace tallyvane::agent
