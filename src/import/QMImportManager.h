// Bringing in the bills of the previous version.
//
//   1 Where they are        import/QMImportManager.cpp
//   2 One bill              import/QMImportManager_bill.cpp
//   3 Its payments          import/QMImportManager_payments.cpp
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// The previous version kept a property list per bill in a folder "Data" and receipts in "receipts" beside it, both in
/// a folder "Tallyvane". Each file becomes a bill of today, written through QMBill; an inactive one is archived. The
/// old files stay as they are. What ends an import throws std::out_of_range; the bills written by then stay.
class QMImportManager {
 public:
  explicit QMImportManager(const Platform& platform) : platform_(platform) {}

  // 1 Where they are. Both put the data folder back to its default place, whether or not there is anything to import.

  /// From the folder that holds the current data folder. Whether an import was run cannot be told; deliberate.
  void importDataFromPreviousVersion();
  /// From "Tallyvane" in the folder for application data.
  void importDataInDefaultLocation();
  /// No, and nothing is done, unless the path ends in exactly "Tallyvane" and has a folder "Data" in it.
  bool importDataFromPreviousVersionAtPath(const std::string& path);
  /// Every entry becomes a bill, folders and foreign files too: these are archived, without payments.
  void performImportWithBillsAtPath(const std::vector<std::string>& entries, const std::string& dataPath);
  /// Whether the current data folder has no bill index yet.
  [[nodiscard]] bool shouldImportData();

  // 2 One bill. Old texts are compared exactly.

  /// The name of the bill in an old file: the file's own, with every ".plist" in it removed.
  [[nodiscard]] std::string billNameOf(std::string_view path) const;
  [[nodiscard]] std::string convertIconWithIcon(std::string_view oldIcon) const;
  [[nodiscard]] std::int64_t calculatePayTypeWithString(std::string_view text) const;
  /// Texts that are not known repeat in weeks.
  [[nodiscard]] std::int64_t calculateRepeatBWithString(std::string_view text) const;

  // 3 Its payments.

  /// The float sum of the elements. The caller gives the old notes, not the amounts; deliberate.
  [[nodiscard]] Value calculateTotalPaidWithPayments(const Array* payments) const;
  /// The payment list of an old record, in its order; receipts are copied into the data folder. `dataPath` is the old
  /// folder "Data". Throws when the old list of attachments or notes is shorter than that of the amounts.
  [[nodiscard]] Array createListOfPaymentsForDictionaryAtPath(const Dictionary& record, const std::string& dataPath);

 private:
  void importBill(const std::string& path, const std::string& dataPath);
  [[nodiscard]] std::string receiptOf(const Value* attachment, const std::string& dataPath);

  const Platform& platform_;
};

}  // namespace tallyvane
