// What the commands that change payments have in common.
#pragma once

#include <string>
#include <vector>

#include "cli/Json.h"
#include "cli/Session.h"
#include "cli/bills/BillLookup.h"
#include "cli/terminal/Fields.h"

namespace tallyvane::cli {

/// The bill's payments in the order in which they were recorded. Fails when its file has something else in their place.
[[nodiscard]] const Array& paymentsOf(const ListedBill& bill);

/// Whether the bill has a list of payments, or nothing in its place.
[[nodiscard]] bool hasReadablePayments(const Dictionary& bill);
/// Names the bills whose payments cannot be read and are not in the sums that are shown.
void nameUncountedBills(Session& session, const std::vector<Dictionary>& bills);

/// Whether this can have been paid: a number above 0 that is finite.
[[nodiscard]] bool isPayable(const Value& amount);

/// The receipt that a person named, as an absolute path. Fails when there is no such file.
[[nodiscard]] std::string receiptInput(const Platform& platform, const std::string& text);

/// Fails when the copy that was made of a receipt in the data folder is not there.
void requireCopied(const Platform& platform, const std::string& receipt, const std::string& copy);

/// Gives a bill this list of payments, and the totals that go with it.
void setPayments(const Platform& platform, Array payments, Dictionary& bill);

/// Puts the bill's file in place as it should be. A bill that is put aside has no reminders after it, unlike one that
/// the model rewrites.
void rewriteBill(const Platform& platform, const ListedBill& bill, const Dictionary& content);

/// The bill's own file as it is now.
[[nodiscard]] Dictionary storedBill(const Platform& platform, const ListedBill& bill);

/// What a payment made of the bill: due date, balance and average, before and after.
[[nodiscard]] std::vector<Field> changedFields(const Platform& platform, const Dictionary& before,
                                               const Dictionary& after);

/// The same as JSON: the bill as it is, with what it was under "previousDueDate" and "previousBalance".
[[nodiscard]] Json changeJson(const Platform& platform, const ListedBill& before, const Dictionary& after);

}  // namespace tallyvane::cli
