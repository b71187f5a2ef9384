// A bill, its file, and its way between the lists of the index.
//
//   1 The record           storage/QMBill_record.cpp
//   2 Index and lifecycle  storage/QMBill_index.cpp
//   3 Cloud mirror         storage/QMBill_cloud.cpp
//   4 Repeat rule          schedule/QMBill_repeat.cpp
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// Failures of writing are not reported by these operations; a caller that must know watches the FileStore it handed
/// in. Index operations are read-modify-write: two writers must not overlap (programs hold their lock).
class QMBill {
 public:
  explicit QMBill(const Platform& platform) : platform_(platform) {}

  // 1 The record. Set every property before writeBill: the file ends at the first one without a value; deliberate. What
  // an import may find in another type than it should have is written as it is: readers of bills allow for that. A bill
  // whose identifier is absent or can name no file of the data folder is not written; the log says so.

  std::optional<std::string> name;
  std::optional<std::string> icon;
  std::optional<Value> dueDate;
  std::optional<Array> repeat;
  std::optional<Value> average;
  std::optional<Value> lastPayment;
  std::optional<Value> totalPaid;
  std::optional<Value> remindMe;
  std::optional<Value> paySite;
  std::optional<Array> paymentList;
  std::optional<std::string> bid;
  std::optional<Value> reminderDays;
  std::optional<Value> balance;
  std::optional<Value> amount;
  std::optional<Value> payType;
  std::optional<Value> interest;
  std::optional<Value> notes;
  std::optional<Value> tags;
  std::optional<Value> rev;

  /// Writes file, index, reminders, tags and mirror from the properties; adds the bill to "ActiveBills" and takes it
  /// out of "ArchivedBills". With `skipActiveMirror` the list of active bills is not mirrored.
  void writeBill(bool skipActiveMirror);
  /// Replaces a bill's file by the dictionary less the five display keys, rebuilds its reminders and mirrors it. The
  /// index is not touched.
  void rewriteSpecificBill(const Dictionary& bill);
  void rewriteSpecificBillWithoutUpdatingiCloud(const Dictionary& bill);
  void saveSpecificKeyWithValueForBill(const std::string& key, const Value& value, const std::string& billIdentifier);
  /// Updates keys of a stored bill. Writes the display keys back with it, deliberately. `values` has a value for each
  /// key.
  void saveSpecificKeysWithValuesForBill(const std::vector<std::string>& keys, const std::vector<Value>& values,
                                         const std::string& billIdentifier);
  /// File name of an older icon number; nothing for a number outside 0 to 11.
  [[nodiscard]] std::optional<std::string> getIconFromInteger(const Value& number) const;
  /// "http://" before an address that has no "http" in it anywhere; an absent or empty text stays as it is.
  [[nodiscard]] std::optional<std::string> getCorrectedPaymentURL(const std::optional<std::string>& text) const;

  // 2 Index and lifecycle. Files of bills stay on disk in every state.

  void overWriteIndexFileWithDictionaryUpdatingKey(const Dictionary& index, std::string_view cloudKey);
  void deleteAllBills();
  void deleteBillWithBid(const std::string& billIdentifier);
  void archiveBillWithBid(const std::string& billIdentifier);
  /// Takes a bill out of the archive only; mirrors nothing and makes no reminders.
  void restoreBillWithBid(const std::string& billIdentifier);
  void moveBillFromIndexToIndexNotUsingIndexAndDisableBill(const std::string& billIdentifier, std::string_view from,
                                                           std::string_view to, std::string_view other, bool disable);

  // 3 Cloud mirror; each does nothing unless "iCloudSyncEnabled".

  void uploadBillToiCloudWithBidAndDictionary(const std::string& billIdentifier, const Dictionary& bill);
  void uploadActiveBillsToiCloud(const Array& bills);
  void uploadDeletedBillsToiCloud(const Array& bills);
  void uploadArchivedBillsToiCloud(const Array& bills);

  // 4 Repeat rule.

  /// The repeat array of a menu choice; empty for a selector outside 0 to 9, one item for an unknown custom unit.
  [[nodiscard]] Array calculateRepeatValuesWithRepeatSelectorAndCustomNumberAndCustomSelector(
      std::int64_t repeatSelector, std::int64_t customNumber, std::int64_t customSelector) const;

 private:
  const Platform& platform_;
};

}  // namespace tallyvane
