// What a check of the data folder finds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallyvane::cli {

enum class FindingKind {
  unreadable,      ///< a file that is there but cannot be read
  keptCopy,        ///< what was kept of an unreadable file when a program replaced it
  foreignFile,     ///< a property list that is none of Tallyvane's
  otherBill,       ///< a file whose content is another bill's
  inNoList,        ///< a bill that no list of the index has
  inSeveralLists,  ///< a bill that more than one list has
  repeated,        ///< an identifier that stands in one list more than once
  withoutFile,     ///< an identifier in a list whose bill has no file
  oddEntry,        ///< something in a list that does not belong there
  oddKey,          ///< a key that is missing, or of another kind than it should be
  noDueDate,
  invalidRepeat,
  oddPayment,
  receiptGone,
};

/// The word for the kind in what programs read: "inNoList".
[[nodiscard]] std::string_view wordOf(FindingKind kind);

/// What is wrong within one file.
struct Problem {
  FindingKind kind = FindingKind::oddKey;
  std::string key;   ///< "" when it is not about one key
  std::string text;  ///< a clause that names the key and says what is wrong
};
using Problems = std::vector<Problem>;

/// A problem and where it is.
struct Finding {
  Problem problem;
  std::string file;  ///< its name in the data folder
  std::string bill;  ///< the name of the bill; "" when there is none or it cannot be told
};

}  // namespace tallyvane::cli
