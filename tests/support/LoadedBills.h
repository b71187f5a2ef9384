// A desktop whose bills are loaded.
#pragma once

#include <gtest/gtest.h>

#include "storage/QMBillsLoader.h"
#include "support/Bills.h"

namespace tallyvane::testing {

struct LoadedBills : ::testing::Test {
  FakeDesktop desktop;
  QMBillsLoader loader{desktop.platform};
};

}  // namespace tallyvane::testing
