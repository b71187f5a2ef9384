#include "agent/DueSoonFeed.h"

#include <array>
#include <string_view>
#include <vector>

#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::agent {

namespace {

/// The bill as its own file holds it: the row may carry a due date that was moved off a weekend. Should the file have
/// gone in the meantime, the row has to do.
Dictionary billOfRow(const Platform& platform, const Dictionary& row) {
  constexpr std::array computed = {key::DateWasModified, key::HumanRepeat, key::HumanDueDate,
                                   key::SortableDueDate, key::DueIcon,     key::DueString};
  Dictionary bill = QMBillsLoader{platform}.loadBillWithID(row.valueOr(key::Bid, std::string())).value_or(row);
  for (const std::string_view name : computed) bill.erase(name);
  return bill;
}

void storeNextBill(const Platform& platform) {
  QMBillsLoader loader(platform);
  const std::vector<Dictionary> due = loader.loadBillsForExtension();
  UserDefaults& group = *platform.groupDefaults;
  Result<> stored = group.set(key::NumberOfBillsDueSoon, loader.getBillsDueSoonForExtensionWithBills(due));
  if (stored) {
    stored = due.empty() ? group.remove(key::NextBill) : group.set(key::NextBill, billOfRow(platform, due.front()));
  }
  if (!stored) platform.log.diagnostic("The widget was not told what is due: " + stored.error());
  (void)group.synchronize();  // lets go of the snapshot, which may be large
}

}  // namespace

void feedDueSoon(const Platform& platform, QMHelperMenulet& menulet) {
  menulet.updateMenuWithDataSource(QMBillsLoader{platform}.loadBills());
  if (platform.groupDefaults != nullptr) storeNextBill(platform);
}

}  // namespace tallyvane::agent
