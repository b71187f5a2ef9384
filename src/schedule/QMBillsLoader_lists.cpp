#include <algorithm>
#include <array>

#include "foundation/NumberReading.h"
#include "platform/PropertyListFile.h"
#include "schedule/SortByDueDate.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

bool hasTag(const Dictionary& bill, std::string_view tag) {
  const Array* tags = bill.get<Array>(key::Tags);
  return tags != nullptr && std::find(tags->begin(), tags->end(), Value(tag)) != tags->end();
}

/// The step that the user's setting asks for. An absent setting reads as 0, which moves to the Friday; deliberate.
std::optional<std::int64_t> weekendStep(UserDefaults& defaults) {
  switch (integerSetting(defaults, key::AvoidWeekends)) {
    case 1:
      return 1;
    case 0:
      return -1;
    default:
      return std::nullopt;
  }
}

void avoidWeekend(const Platform& platform, Dictionary& row) {
  row.set(key::DateWasModified, false);
  const std::optional<std::int64_t> step = weekendStep(platform.defaults);
  const Date* due = row.get<Date>(key::DueDate);
  if (!step || due == nullptr) return;
  if (const auto moved = QMBillsLoader{platform}.modifyDueDateToAvoidWeekendsWithAmount(*due, *step)) {
    row.set(key::DueDate, *moved);
    row.set(key::DateWasModified, true);
  }
}

/// The widget uses the same horizon.
void shareHorizon(const Platform& platform) {
  if (platform.groupDefaults == nullptr) return;
  const std::int64_t days = integerSetting(platform.defaults, key::DueSoonDays);
  if (!platform.groupDefaults->set(key::DueSoonDays, days)) platform.log.line("Oops, that did not work.");
}

}  // namespace

/// A rule of the wrong type is a rule that cannot be read, not an absent one.
std::optional<std::string> QMBillsLoader::repeatSentence(const Dictionary& bill) const {
  static const Array unreadable;
  const Array* repeat = bill.get<Array>(key::Repeat);
  return createHumanRepeatWithArray(repeat == nullptr && bill.contains(key::Repeat) ? &unreadable : repeat);
}

void QMBillsLoader::addDisplayKeys(Dictionary& bill) const {
  bill.set(key::HumanRepeat, repeatSentence(bill).value_or(std::string()));
  const Value* payType = bill.find(key::PayType);
  const Date* due = bill.get<Date>(key::DueDate);
  if (due == nullptr) {
    // Nothing can be said of it but whether it is paid automatically.
    const bool automatic = integerValue(payType) == key::paidAutomatically;
    bill.erase(key::SortableDueDate);  // a file may hold an earlier one
    bill.set(key::HumanDueDate, "");
    bill.set(key::DueIcon, automatic ? "blue5.png" : "");
    bill.set(key::DueString, "");
    return;
  }
  const Date date = *due;  // setting a key may move what `due` points to
  const Value sortNumber = createSortableDueDateWithDueDateAndCurrentDate(date, platform_.clock.now());
  const std::string icon = createDueIconWithSortNumberAndPaymentType(&sortNumber, payType);
  bill.set(key::HumanDueDate, createHumanDueDateWithDueDateAndCurrentDate(date, platform_.clock.now()));
  bill.set(key::SortableDueDate, sortNumber);
  bill.set(key::DueIcon, icon);
  bill.set(key::DueString, createDueDateStringWithDate(date));
}

std::vector<Dictionary> QMBillsLoader::loadBillsInGroupWithTag(std::string_view group, std::string_view tag) {
  shareHorizon(platform_);
  const bool hidesAutomatic = boolSetting(platform_.defaults, key::HideAutomaticBillsInOverview);
  std::vector<Dictionary> rows;
  const std::string folder = dataFolder(platform_);
  for (const std::string& bid : getListOfBills(group).value_or(std::vector<std::string>())) {
    auto row = readPropertyListFile<Dictionary>(platform_.files, platform_.log, billPathIn(folder, bid));
    if (!row || (!tag.empty() && !hasTag(*row, tag))) continue;
    avoidWeekend(platform_, *row);
    addDisplayKeys(*row);
    if (hidesAutomatic && int32Value(*row, key::PayType) == key::paidAutomatically) continue;
    rows.push_back(std::move(*row));
  }
  platform_.log.line("Running Overview Update");
  if (platform_.groupDefaults != nullptr) saveDataForExtensionWithBills(sortedByDueDate(rows));
  return rows;
}

std::vector<std::int32_t> QMBillsLoader::rowsPerSectionForData(const std::vector<Dictionary>& rows) const {
  platform_.log.line("Bills: " + std::to_string(static_cast<std::int32_t>(rows.size())));
  std::int32_t overdue = 0;
  std::int32_t dueSoon = 0;
  std::int32_t dueLater = 0;
  for (const Dictionary& row : rows) {
    const Date* due = row.get<Date>(key::DueDate);
    if (due == nullptr) continue;
    const std::int64_t days = getDaysApartWithDateAndCurrentDate(*due, platform_.clock.now());
    if (days < 0) {
      ++overdue;
    } else if (days > int32Setting(platform_.defaults, key::DueSoonDays)) {
      ++dueLater;
    } else {
      ++dueSoon;
    }
  }
  return {overdue, dueSoon, dueLater};
}

Dictionary QMBillsLoader::dataSourceDetailsForDataSource(const std::vector<Dictionary>& rows) const {
  static constexpr std::array<std::string_view, 3> titles = {"Overdue", "Due Soon", "Due Later"};
  const std::vector<std::int32_t> counts = rowsPerSectionForData(rows);
  Array present;
  std::vector<std::string_view> presentTitles;
  for (std::size_t section = 0; section < titles.size(); ++section) {
    if (counts[section] <= 0) continue;
    present.emplace_back(counts[section]);
    presentTitles.push_back(titles[section]);
  }
  const auto titleOr = [&](std::size_t slot) { return slot < presentTitles.size() ? presentTitles[slot] : ""; };
  return {{"RowsInOverdue", counts[0]},
          {"RowsInDueSoon", counts[1]},
          {"RowsInDueLater", counts[2]},
          {"OverdueSectionExists", counts[0] > 0},
          {"DueSoonSectionExists", counts[1] > 0},
          {"DueLaterSectionExists", counts[2] > 0},
          {"TotalSections", present.size()},
          {"RowsPerSection", present},
          {"Section1", titleOr(0)},
          {"Section2", titleOr(1)},
          {"Section3", titles[2]}};  // also when there are fewer than three sections; deliberate
}

std::int64_t QMBillsLoader::sectionCountForData(const std::vector<Dictionary>& /*rows*/) const { return 3; }

Value QMBillsLoader::getEstimatedAmountDueForBill(const Dictionary& bill) const {
  // An amount below 1 reads as none; deliberate.
  const Value* amount = bill.find(key::Amount);
  const Value* estimate = int32Value(amount) != 0 ? amount : bill.find(key::Average);
  return estimate == nullptr ? Value(0) : *estimate;
}

std::int64_t QMBillsLoader::returnBillsToDisplayFromIndex(std::uint64_t choice) const {
  static constexpr std::array<std::int64_t, 3> days = {5, 14, 30};
  return choice < days.size() ? days[choice] : 10000;
}

}  // namespace tallyvane
