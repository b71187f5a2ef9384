#include "schedule/SortByDueDate.h"

#include <algorithm>
#include <limits>

#include "foundation/NumberReading.h"
#include "storage/Keys.h"

namespace tallyvane {

namespace {

std::int64_t sortNumber(const Dictionary& row) {
  const Value* number = row.find(key::SortableDueDate);
  return number == nullptr ? std::numeric_limits<std::int64_t>::max() : integerValue(number);
}

}  // namespace

std::vector<Dictionary> sortedByDueDate(std::vector<Dictionary> rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const Dictionary& left, const Dictionary& right) {
    return sortNumber(left) < sortNumber(right);
  });
  return rows;
}

}  // namespace tallyvane
