// Recording payments, undoing the last one, and what a bill's numbers and due date become by it.
//
//   1 Recording            payments/QMPaymentLogger_recording.cpp
//   2 Next due date        payments/QMPaymentLogger_dueDates.cpp
//   3 Totals and rules     payments/QMPaymentLogger_totals.cpp
//   4 Receipts and sounds  payments/QMPaymentLogger_receipts.cpp
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "payments/QMPayment.h"
#include "platform/Platform.h"

namespace tallyvane {

/// Made fresh for each use; keeps nothing between calls. Amounts are read as 32-bit floats and counted in them; a
/// "float number" is such a float as a Value. Failed saves and copies are not reported (see QMBill); what a caller got
/// wrong throws std::invalid_argument before anything is written.
class QMPaymentLogger {
 public:
  explicit QMPaymentLogger(const Platform& platform) : platform_(platform) {}

  // 1 Recording. An entry of a payment list is a dictionary of "Amount", "Date", "Note" and "Receipt"; a bill's list
  // stands in the order in which the payments were recorded, whatever their dates.

  /// Records the payment and moves the due date on.
  void recordPaymentForBill(const QMPayment& payment, const Dictionary& bill);
  /// Copies the receipt, enters the payment in a copy of the bill, brings its totals, balance, last payment and, if
  /// `updateDate`, its due date up to date, and rewrites its file and reminders. `bill` itself is not touched. A due
  /// date stays as it is when the repeat rule leads to none; the log says so. Throws when the payment lacks a value or
  /// the bill's "PaymentList" is no list.
  void recordPaymentForBillAndUpdateDate(const QMPayment& payment, const Dictionary& bill, bool updateDate);
  /// The bill as the above stores it, in which more payments can be entered before it is written. Copies the receipt.
  [[nodiscard]] Dictionary billWithPayment(const QMPayment& payment, Dictionary bill, bool updateDate) const;
  /// The bill's payment list with a new entry at its end. `record` is [amount, date, note, receipt]; throws when it has
  /// not exactly these four. Also appends to the list that `bill` holds; a bill without a list, or with an empty one,
  /// is left as it is.
  [[nodiscard]] Array addNewRecordToPaymentListInBill(const Array& record, Dictionary& bill) const;
  /// Undoes the most recent payment of a stored bill. `payments` is its payment list with the most recent first. That
  /// must have been paid on the day of "LastPayment"; if not, nothing changes and the answer is no. The entry is taken
  /// out of `payments`, and the rest stored in the order given. Balance, reminders and the receipt's file stay as they
  /// are; deliberate.
  bool reverseLastPaymentForBillAndPayments(const std::string& billIdentifier, Array& payments);
  /// The bill as the above stores it, for a caller that has another order to store; nothing where it refuses.
  [[nodiscard]] std::optional<Dictionary> billWithoutLastPayment(const std::string& billIdentifier,
                                                                 Array& payments) const;

  // 2 Next due date. Weeks, months and days are steps of the Gregorian calendar that keep the time of day; a day that
  // the month lacks is its last one.

  /// Nothing without a due date, and for a rule of no known kind.
  [[nodiscard]] std::optional<Date> calculateNextDueDateForBill(const Dictionary& bill) const;
  /// The step is taken `modifier` times: 1 forward, -1 back. A twice-per-month bill always goes forward; deliberate.
  [[nodiscard]] std::optional<Date> calculateNextDueDateForBillWithModifier(const Dictionary& bill,
                                                                            std::int32_t modifier) const;
  /// The next of two days of the month (the first smaller than the second), at midnight, in the user's calendar.
  [[nodiscard]] Date calculateSpecialNextDueDateTwicePerMonthForDateWithDays(
      Date date, const std::array<int, 2>& dayNumbers) const;

  // 3 Totals and rules. Totals are [total, average], both float numbers.

  /// The average divides by the entries that are there already, without the new payment, and so by zero for the first
  /// one; deliberate.
  [[nodiscard]] Array calculateAveragePaidForBillWithNewPayment(const Dictionary& bill, const Value& amount) const;
  [[nodiscard]] Array recalculateAveragePaidForData(const Array& payments) const;
  /// Whether the stored date lies at least a whole second before the new one. A distance of more than 68 years answers
  /// yes in either direction, and no stored date no; both deliberate.
  [[nodiscard]] bool shouldUpdateLastPaidDateWithNewDate(std::optional<Date> stored, Date newDate) const;
  /// What to propose in a payment form: the bill's amount, else that of its last payment, else 0.
  [[nodiscard]] Value amountPrefilValueForBill(const Dictionary& bill) const;
  /// Whether an automatic bill is due, so that it is logged without asking. `row` has the display keys; a sort number
  /// that is absent reads as 0, which is due.
  [[nodiscard]] bool checkIfBillShouldSilentlyLog(const Dictionary& row) const;

  // 4 Receipts and sounds.

  /// Name of the sound resource that celebrates a payment; nothing while the user wants none.
  [[nodiscard]] std::optional<std::string> getSpecifiedSound() const;
  [[nodiscard]] std::string randomSound() const;
  /// "" for the receipt button's titles, which stand for no receipt; any other text as it is.
  [[nodiscard]] std::string cleanReceiptTitle(const std::string& text) const;
  [[nodiscard]] std::string reverseCleanReceiptTitleWithString(const std::string& text) const;
  /// The user's word for the button's title: 1 is the long one, 2 the short one, others are empty.
  [[nodiscard]] std::string resetTitleForReceiptButton(std::int64_t style) const;
  /// Copies a receipt into the data folder under a new name with the same extension, and gives the copy's path, also
  /// when the copy failed (the log says so): readers must allow for a file that is not there. A title is given back.
  [[nodiscard]] std::string copyAttachment(const std::string& path) const;

 private:
  /// An entry of a payment list, made of the four values of a record.
  [[nodiscard]] Value entryOf(const Array& record) const;

  const Platform& platform_;
};

}  // namespace tallyvane
