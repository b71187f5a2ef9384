// Bills and payments in forms that other programs read. The same data gives the same text, whenever it is exported.
#pragma once

#include <string>
#include <vector>

#include "cli/bills/BillLookup.h"
#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// Everything of each bill but what depends on today.
[[nodiscard]] std::string jsonOf(const Platform& platform, const std::vector<ListedBill>& bills);

/// Comma-separated values by RFC 4180, with a header: a row for each bill, and after it one for each of its payments.
/// The first column tells them apart.
[[nodiscard]] std::string csvOf(const Platform& platform, const std::vector<ListedBill>& bills);

/// A calendar by RFC 5545: an all-day event on each active bill's due date, with its recurrence. An error when no
/// active bill is due on a day: a calendar without events is not valid.
[[nodiscard]] Result<std::string> calendarOf(const Platform& platform, const std::vector<ListedBill>& bills);

/// A journal for hledger: the payments by their days, each from one account of assets to the bill's account of
/// expenses, in the currency of the user's locale. What is no payment is named in a comment.
[[nodiscard]] std::string journalOf(const Platform& platform, const std::vector<ListedBill>& bills);

}  // namespace tallyvane::cli
