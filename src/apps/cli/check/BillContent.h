// What may be wrong within the property lists of the data folder.
#pragma once

#include "cli/check/Finding.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// Of a bill's dictionary: its 19 keys, its due date and repeat rule, its payments. Keys beyond these are nobody's
/// business.
[[nodiscard]] Problems problemsOfBill(const Dictionary& bill);

/// Receipts of its payments that are neither where the payment says nor in the data folder.
[[nodiscard]] Problems missingReceipts(const Platform& platform, const Dictionary& bill);

/// Of the root of the list of tags, of the sources of income, and of the queue of mails.
[[nodiscard]] Problems problemsOfTags(const Array& tags);
[[nodiscard]] Problems problemsOfIncome(const Dictionary& income);
[[nodiscard]] Problems problemsOfMails(const Dictionary& queue);

}  // namespace tallyvane::cli
