#include "cli/input/NextDueDates.h"

#include "payments/QMPaymentLogger.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

std::vector<Date> nextDueDates(const Platform& platform, Date due, const Array& repeat, std::size_t count) {
  std::vector<Date> dates;
  const QMPaymentLogger logger{platform};
  Dictionary bill{{std::string(key::DueDate), due}, {std::string(key::Repeat), repeat}};
  while (dates.size() < count) {
    const Date last = dates.empty() ? due : dates.back();
    const auto next = logger.calculateNextDueDateForBill(bill);
    if (!next || *next <= last || *next >= distantFuture) break;
    dates.push_back(*next);
    bill.set(key::DueDate, *next);
  }
  return dates;
}

}  // namespace tallyvane::cli
