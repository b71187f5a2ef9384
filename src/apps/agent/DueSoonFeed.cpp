#include "agent/DueSoonFeed.h"

#include <array>
#include <string_view>
#include <vector>

#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::agent {

namespace {

Dictionary withoutComputedKeys(Dictionary row) {
  constexpr std::array computed = {key::DateWasModified, key::HumanRepeat, key::HumanDueDate,
                                   key::SortableDueDate, key::DueIcon,     key::DueString};
  for (const std::string_view name : computed) row.erase(name);
  return row;
}

void storeNextBill(const Platform& platform) {
  QMBillsLoader loader(platform);
  const std::vector<Dictionary> due = loader.loadBillsForExtension();
  UserDefaults& group = *platform.groupDefaults;
  Result<> stored = group.set(key::NumberOfBillsDueSoon, loader.getBillsDueSoonForExtensionWithBills(due));
  if (stored) {
    stored = due.empty() ? group.remove(key::NextBill) : group.set(key::NextBill, withoutComputedKeys(due.front()));
  }
  if (!stored) platform.log.diagnostic("The widget was not told what is due: " + stored.error());
}

}  // namespace

void feedDueSoon(const Platform& platform, QMHelperMenulet& menulet) {
  menulet.updateMenuWithDataSource(QMBillsLoader{platform}.loadBills());
  if (platform.groupDefaults != nullptr) storeNextBill(platform);
}

}  // namespace tallyvane::agent
