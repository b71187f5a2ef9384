#include "cli/check/Finding.h"

namespace tallyvane::cli {

std::string_view wordOf(FindingKind kind) {
  static constexpr std::string_view words[] = {
      "unreadable",  "keptCopy", "foreignFile", "otherBill", "inNoList",      "inSeveralLists", "repeated",
      "withoutFile", "oddEntry", "oddKey",      "noDueDate", "invalidRepeat", "oddPayment",     "receiptGone"};
  return words[static_cast<std::size_t>(kind)];
}

}  // namespace tallyvane::cli
