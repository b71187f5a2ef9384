#pragma once

#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// The data of a bill's graph: 24 positions, the newest first. Months are those of the user's calendar as of now.
/// Changes no list it is given and writes nothing. Elements that are no payment are not there; a payment without a
/// date stands behind all others by payment, with an empty label, and in no month.
class QMMonthlyGraphManager {
 public:
  explicit QMMonthlyGraphManager(const Platform& platform) : platform_(platform) {}

  /// One graph, as a dictionary of "Labels", "Amounts" (texts in the user's currency), "Heights" (floats from 0 to 1)
  /// and "Images" of 24 elements each. The images follow the months also where the bars are payments; deliberate.
  [[nodiscard]] Array listOfPaymentsByPaymentForBill(const Dictionary& bill) const;
  [[nodiscard]] Array listOfPaymentsByMonthForBill(const Dictionary& bill) const;

  /// Of the 23 newest payments, then fillers, "" or the float 0; the last position is always one; deliberate.
  [[nodiscard]] std::vector<std::string> datesForPayments(const Array& payments) const;
  [[nodiscard]] Array amountsForPayments(const Array& payments) const;

  /// Short names of the months, this one first.
  [[nodiscard]] std::vector<std::string> months() const;
  /// By the month's year: "orchidbar.png" this, "blackbar.png" last, "oldbar.png" an earlier one.
  [[nodiscard]] std::vector<std::string> graphImagesForMonths() const;
  /// 24 sums of 32-bit floats in list order. Older payments and those of months to come are left out.
  [[nodiscard]] Array paymentAmountsByMonthForList(const Array& payments) const;
  /// Each as a fraction of the largest, 0 for what is not above 0.
  [[nodiscard]] Array paymentHeightByMonthForPayments(const Array& amounts) const;
  [[nodiscard]] std::vector<std::string> amountStringsByMonthForAmounts(const Array& amounts) const;

 private:
  [[nodiscard]] std::vector<Date> monthDates() const;
  [[nodiscard]] Array graph(const std::vector<std::string>& labels, const Array& amounts) const;

  const Platform& platform_;
};

}  // namespace tallyvane
