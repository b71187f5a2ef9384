#include <algorithm>

#include "foundation/NumberReading.h"
#include "schedule/DateDescription.h"
#include "schedule/SortByDueDate.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

std::string dateText(const Dictionary& row) {
  const Date* due = row.get<Date>(key::DueDate);
  return due == nullptr ? "(null)" : dateDescription(*due);
}

bool needsAttention(const Dictionary& row) {
  const auto* icon = row.get<std::string>(key::DueIcon);
  return icon != nullptr && (*icon == "yellow5.png" || *icon == "red5.png");
}

}  // namespace

std::vector<Dictionary> QMBillsLoader::loadBills() { return loadBillsInGroupWithTag(key::ActiveBills, ""); }

void QMBillsLoader::saveDataForExtensionWithBills(const std::vector<Dictionary>& rows) {
  UserDefaults* group = platform_.groupDefaults;
  if (group == nullptr) return;
  Result<> stored = group->set(key::ActiveBills, Array(rows.begin(), rows.end()));
  if (stored) stored = group->synchronize();
  if (!stored) platform_.log.diagnostic("The widget's snapshot was not saved: " + stored.error());
}

// The lines "OK1" to "OK4" stand in the log for each row, in this order; deliberate.
std::vector<Dictionary> QMBillsLoader::loadBillsForExtension() {
  UserDefaults* group = platform_.groupDefaults;
  if (group != nullptr) (void)group->synchronize();
  const auto stored = group == nullptr ? std::nullopt : settingOf<Array>(*group, key::ActiveBills);
  Log& log = platform_.log;
  log.line("Bills.count " + std::to_string(stored ? stored->size() : 0));

  std::vector<Dictionary> kept;
  if (!stored) return kept;
  for (const Value& element : *stored) {
    Dictionary row = element.is<Dictionary>() ? *element.get<Dictionary>() : Dictionary();
    log.line("OK1");
    log.line("Due Date " + dateText(row));
    // The date as stored, moved off a weekend when the snapshot was written; not moved again, deliberately.
    addDisplayKeys(row);
    if (const Value* sortNumber = row.find(key::SortableDueDate)) {
      // The widget's own horizon, not the user's setting.
      row.set(key::DueIcon, createDueIconForExtensionWithSortNumberAndPaymentType(sortNumber, row.find(key::PayType)));
    }
    log.line("OK2");
    log.line("Due Icon " + row.valueOr(key::DueIcon, std::string()));
    log.line("OK3");
    if (needsAttention(row)) kept.push_back(std::move(row));
    log.line("OK4");
  }
  return sortedByDueDate(std::move(kept));
}

std::int64_t QMBillsLoader::getBillsDueSoonForExtensionWithBills(const std::vector<Dictionary>& rows) const {
  return std::count_if(rows.begin(), rows.end(), needsAttention);
}

std::optional<Dictionary> QMBillsLoader::loadDataForExtension() {
  UserDefaults* group = platform_.groupDefaults;
  if (group == nullptr || integerSetting(*group, key::NumberOfBillsDueSoon) <= 0) return std::nullopt;
  const std::optional<Value> stored = group->object(key::NextBill);
  const Dictionary* next = stored ? stored->get<Dictionary>() : nullptr;
  if (next == nullptr) return std::nullopt;
  Dictionary bill = *next;
  addDisplayKeys(bill);  // with the icon of the user's own horizon, not the widget's; deliberate
  return bill;
}

}  // namespace tallyvane
