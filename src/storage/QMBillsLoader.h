// Reading bills, their lists and tags, and saying in words when they are due.
//
//   1 Data location        storage/QMBillsLoader_location.cpp
//   2 Bills and index      storage/QMBillsLoader_index.cpp
//   3 Tags                 storage/QMBillsLoader_tags.cpp
//   4 Repeat rules         schedule/QMBillsLoader_repeat.cpp
//   5 Due dates in words   schedule/QMBillsLoader_dueDates.cpp
//   6 Icons                schedule/QMBillsLoader_icons.cpp
//   7 Lists and sections   schedule/QMBillsLoader_lists.cpp
//   8 Widget snapshot      schedule/QMBillsLoader_widget.cpp
//   9 Backup               storage/QMBillsLoader_backup.cpp
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

/// Made fresh for each use and thrown away; keeps no bills. Days, texts and order follow the region's locale, calendar
/// and time zone. Files that cannot be read count as missing; see readPropertyListFile for what is logged.
class QMBillsLoader {
 public:
  explicit QMBillsLoader(const Platform& platform) : platform_(platform) {}

  // 1 Data location. Absolute paths without a slash at the end, worked out anew at every call.

  /// The data folder "Tallyvane.tvdata"; created only in the default location. No value when the user's own location
  /// is switched on and cannot be told; callers then read nothing and write nowhere.
  [[nodiscard]] std::optional<std::string> tallyvaneDirectory();
  /// The user-chosen folder itself; "" when none is switched on, no value when its bookmark does not resolve.
  [[nodiscard]] std::optional<std::string> tallyvaneDropboxFolder();
  /// Store a value that the getters above never read; deliberate.
  void setTallyvaneDirectory(std::string path) { storedDirectory_ = std::move(path); }
  void setTallyvaneDropboxFolder(std::string path) { storedDropboxFolder_ = std::move(path); }
  /// Where backups are kept, created if missing. The phone's folder is kept for the mobile edition's layout.
  [[nodiscard]] std::string tallyvaneBackupPath() { return tallyvaneBackupPathMac(); }
  [[nodiscard]] std::string tallyvaneBackupPathMac();
  [[nodiscard]] std::string tallyvaneBackupPathPhone();

  // 2 Bills and index.

  /// The bill's file with the five display keys as of now, its stored due date untouched; nothing when there is no such
  /// file.
  [[nodiscard]] std::optional<Dictionary> loadBillWithID(const std::string& bid);
  /// Identifiers under a key of the index ("ActiveBills" …); nothing when the file or the key is missing.
  [[nodiscard]] std::optional<std::vector<std::string>> getListOfBills(std::string_view key);

  // 3 Tags. Compared as exact strings when merged. The "save" and "overwrite" operations mirror the list to the cloud
  // store when the user syncs.

  /// The stored tags in the locale's order, case ignored; nothing when the file cannot be read.
  [[nodiscard]] std::optional<std::vector<std::string>> getListOfTags();
  /// Writes the old tags in sorted order, then those of `tags` that were not among them, each as often as it is given.
  void saveListOfTagsWithTags(const std::vector<std::string>& tags);
  void overwriteListOfTagsWithTags(const std::vector<std::string>& tags);
  /// For a list that came from the cloud store: not sent back.
  void updateListOfTagsFromiCloudWithTags(const std::vector<std::string>& tags);

  // 4 Repeat rules. A repeat array is [count, unit kind]: 0 weeks, 1 twice per month, 2 months, 3 days, 4 never. A
  // repeat selection is what a menu of ten choices shows: [selector], or [6, custom unit]. A null array is an absent
  // one.

  [[nodiscard]] std::optional<std::vector<std::int64_t>> getRepeatFromArray(const Array* repeat) const;
  /// For the desktop's menu, which has no choices 8 and 9.
  [[nodiscard]] std::optional<std::vector<std::int64_t>> getRepeatFromArrayMac(const Array* repeat) const;
  /// Title of a selection's first item, not localized. Throws std::out_of_range for an empty selection; null reads as
  /// 0.
  [[nodiscard]] std::string repeatStringFromRepeatArray(const std::vector<std::int64_t>* selection) const;
  /// The rule as a sentence; nothing for a unit kind outside 0 to 4.
  [[nodiscard]] std::optional<std::string> createHumanRepeatWithArray(const Array* repeat) const;

  // 5 Due dates in words.

  [[nodiscard]] Date normalizedDate(Date date) const;
  /// Seconds between the two day starts over 86400, cut toward zero: a day that a clock change makes short does not
  /// count.
  [[nodiscard]] std::int64_t getDaysApartWithDateAndCurrentDate(Date due, Date current) const;
  [[nodiscard]] std::string createHumanDueDateWithDueDateAndCurrentDate(Date due, Date current) const;
  /// Whole seconds from the start of today to the start of the due day.
  [[nodiscard]] std::int64_t createSortableDueDateWithDueDateAndCurrentDate(Date due, Date current) const;
  /// These three format the date itself; further than 10000 days from today they say "Never", "Never" and " ".
  [[nodiscard]] std::string createDueDateStringWithDate(Date date) const;
  [[nodiscard]] std::string createShortDueDateStringWithDueDate(Date date) const;
  [[nodiscard]] std::string createDayStringWithDate(Date date) const;
  [[nodiscard]] bool isDueDateInThisMonth(Date due, Date reference) const;
  /// The date moved by `step` days off a weekend, twice at most; nothing when it is not on one.
  [[nodiscard]] std::optional<Date> modifyDueDateToAvoidWeekendsWithAmount(Date due, std::int64_t step) const;
  [[nodiscard]] std::string currencyFormattedNumber(const Value* number) const;
  [[nodiscard]] std::string numberFormattedNumber(const Value* number) const;
  [[nodiscard]] std::string formattedTimesPaidWithPayments(const Array* payments) const;

  // 6 Icons. Null numbers count as 0.

  [[nodiscard]] std::string createDueIconWithSortNumberAndPaymentType(const Value* sortNumber,
                                                                      const Value* payType) const;
  /// The widget's horizon is the group suite's, 7 where that is 0 or has none.
  [[nodiscard]] std::string createDueIconForExtensionWithSortNumberAndPaymentType(const Value* sortNumber,
                                                                                  const Value* payType) const;
  /// The older set: any negative number is red, 15 days and more are green.
  [[nodiscard]] std::string calculateIconWithDueDateNumber(const Value* sortNumber) const;
  /// Index in the catalogue of an older data's icon name; 0 for any other.
  [[nodiscard]] std::int64_t getIndexForIcon(std::string_view olderName) const;
  struct IconTitle {
    std::int64_t index;
    std::string title;
  };
  /// Nothing for a name that the catalogue lacks.
  [[nodiscard]] std::optional<IconTitle> getTitleForIcon(std::string_view imageName) const;

  // 7 Lists and sections.

  /// Display rows of a list of the index, in its order: the bill's dictionary, its due date moved off a weekend where
  /// the user asks for that, and the computed keys. "" lists every tag. Replaces the widget snapshot, whatever the
  /// group.
  [[nodiscard]] std::vector<Dictionary> loadBillsInGroupWithTag(std::string_view group, std::string_view tag);
  /// Counts of overdue, due-soon and due-later rows. A row without a due date stands in none.
  [[nodiscard]] std::vector<std::int32_t> rowsPerSectionForData(const std::vector<Dictionary>& rows) const;
  [[nodiscard]] Dictionary dataSourceDetailsForDataSource(const std::vector<Dictionary>& rows) const;
  /// Always 3, whatever the rows; deliberate.
  [[nodiscard]] std::int64_t sectionCountForData(const std::vector<Dictionary>& rows) const;
  /// "Amount" unless its whole part is 0, then "Average"; absent reads as 0.
  [[nodiscard]] Value getEstimatedAmountDueForBill(const Dictionary& bill) const;
  /// How many days ahead a choice of the display range reaches; 10000 is all.
  [[nodiscard]] std::int64_t returnBillsToDisplayFromIndex(std::uint64_t choice) const;

  // 8 Widget snapshot, in the group suite. Where there is none, nothing is stored and nothing found.

  [[nodiscard]] std::vector<Dictionary> loadBills();
  void saveDataForExtensionWithBills(const std::vector<Dictionary>& rows);
  /// Rows of the snapshot that are due soon or overdue now, by sort number, automatic ones left out.
  [[nodiscard]] std::vector<Dictionary> loadBillsForExtension();
  [[nodiscard]] std::int64_t getBillsDueSoonForExtensionWithBills(const std::vector<Dictionary>& rows) const;
  /// The next bill with its display keys; nothing when no bill needs attention.
  [[nodiscard]] std::optional<Dictionary> loadDataForExtension();

  // 9 Backup. A backup is a whole copy of the data folder, in the backup folder under an identifier; only the newest is
  // kept. Nobody may write bills meanwhile (programs hold their lock).

  /// Makes today's backup unless one was made today. A failed copy still counts as today's and costs the previous
  /// backup; deliberate, so callers look first whether the data folder can be copied.
  void backupDatabase();
  /// Replaces the data folder by the newest backup, which stays; whether that worked. Nothing is done without a
  /// complete backup; a copy that fails after the removal leaves no data folder.
  bool restoreDatabase();
  /// The day of the last backup as a due date in words; "Never" before the first.
  [[nodiscard]] std::string lastBackedUpNaturalDate();

 private:
  [[nodiscard]] std::optional<std::string> dataFolderOfBookmark();
  [[nodiscard]] std::optional<std::string> resolvedBookmark();
  [[nodiscard]] std::optional<std::string> repeatSentence(const Dictionary& bill) const;
  [[nodiscard]] bool isBeyondHorizon(Date date) const;
  /// Sets the five display keys, as of now. A missing due date gives empty due texts and no sort number.
  void addDisplayKeys(Dictionary& bill) const;

  const Platform& platform_;
  std::string storedDirectory_;
  std::string storedDropboxFolder_;
};

/// The catalogue of bill icons: image name and title, position is the index.
struct CatalogueIcon {
  std::string_view imageName;
  std::string_view title;
};
[[nodiscard]] const std::vector<CatalogueIcon>& iconCatalogue();

/// The menu titles of the repeat selectors 0 to 9.
[[nodiscard]] const std::vector<std::string_view>& repeatTitles();

}  // namespace tallyvane
