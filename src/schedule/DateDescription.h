#pragma once

#include <string>

#include "foundation/Date.h"

namespace tallyvane {

/// How log lines show a date: "2027-03-12 05:00:00 +0000", always in UTC.
[[nodiscard]] std::string dateDescription(Date date);

}  // namespace tallyvane
