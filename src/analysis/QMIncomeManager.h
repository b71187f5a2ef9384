#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// The "Repeat" of a source, compared without sign, so that a negative code is any other one; nothing when it is there
/// but cannot be read as a number.
[[nodiscard]] std::optional<std::uint32_t> incomeIntervalCode(const Dictionary& source);

/// Money that comes in: the sources in "incomeindex.plist" of the data folder. This month and today are the user's, as
/// of now.
///
///   "Repeat"         comes on                                       is kept by pruning
///   0 once           day "PayDate" + 1 of the month                 in the month of its "CreationDate"
///   1 monthly        day "PayDate" + 1 of every month               always
///   2 fortnightly    "IncomeDates"                                  always, without the dates before this month
///   3 weekly         "IncomeDates"                                  always, without the dates before this month
///   any other        never                                          in the month of its "CreationDate"
///
/// "PayDate" 28 is the last day of the month. What cannot be read is lost by no operation: an element that is no
/// dictionary, or whose "Repeat" is there but has no number, stays as it is and brings nothing; so do "IncomeDates"
/// that are no list of dates.
class QMIncomeManager {
 public:
  explicit QMIncomeManager(const Platform& platform) : platform_(platform) {}

  // Each of the four reads and prunes the file and writes it back, every time, creating it where it is missing; a
  // failed write is not reported. Programs hold their lock.

  Array getIncomeSources();
  /// Money up to and including today, and of the whole month; a 32-bit float sum. Of "IncomeDates" only those before
  /// the first of another month count.
  [[nodiscard]] float incomeThisMonth();
  [[nodiscard]] float incomeThisMonthAll();
  /// This month's and next month's dates, source by source; none of January in December, from "IncomeDates";
  /// deliberate.
  [[nodiscard]] std::vector<Date> incomeDatesThisMonth();

  /// Writes the sources as they are given; not pruned.
  void writeUpdatedIncomeArray(const Array& sources);
  /// A new list; the one given is not touched. Where no date lies in this month, all dates go, those to come as well;
  /// deliberate.
  [[nodiscard]] Array removeInactiveIncomeSources(const Array& sources) const;

  /// When a source pays, such as "Mar 31": in the locale's words for "IncomeDates", in English by day index;
  /// deliberate. Empty for any other source.
  [[nodiscard]] std::string displayDateWithIncome(const Dictionary& source) const;
  [[nodiscard]] std::string displayDateFromIndex(std::int64_t index) const;
  /// The number of days of this month.
  [[nodiscard]] std::int64_t lastDayOfMonth() const;
  /// The start and its followers over about three years: 156 weekly ones (interval 3), 78 fortnightly ones (2), none.
  [[nodiscard]] Array createArrayOfIncomeDatesForIntervalFromDate(std::int64_t interval, std::int64_t dayIndex) const;
  /// Midnight of day index + 1 of this month; a day that the month lacks is one of the next.
  [[nodiscard]] Date dateFromDateIndex(std::int64_t index) const;

 private:
  [[nodiscard]] bool isThisMonth(Date date) const;
  [[nodiscard]] CivilDay firstDayOfMonth() const;
  [[nodiscard]] std::int64_t today() const;
  [[nodiscard]] std::int64_t payDay(std::int64_t index) const;
  [[nodiscard]] Array trimmed(const Array& dates) const;
  /// Calls add(amount, day of the month) for each payment of this month.
  template <typename Add>
  void forEachIncome(Add add);

  const Platform& platform_;
};

}  // namespace tallyvane
