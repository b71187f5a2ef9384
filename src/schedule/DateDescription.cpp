#include "schedule/DateDescription.h"

#include <fmt/format.h>

namespace tallyvane {

std::string dateDescription(Date date) {
  const auto day = std::chrono::floor<std::chrono::days>(date);
  const std::chrono::year_month_day ymd{day};
  const std::chrono::hh_mm_ss time{std::chrono::floor<std::chrono::seconds>(date - day)};
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} +0000", static_cast<int>(ymd.year()),
                     static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()), time.hours().count(),
                     time.minutes().count(), time.seconds().count());
}

}  // namespace tallyvane
