#include <algorithm>

#include "foundation/NumberReading.h"
#include "storage/Keys.h"
#include "storage/OlderIcons.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t defaultWidgetHorizonInDays = 7;

/// Settings and payment type are read in 64 bits here, and in 32 bits for hiding and sections; deliberate.
std::string dueIcon(const Value* sortNumber, const Value* payType, std::int64_t dueSoonDays) {
  if (integerValue(payType) == key::paidAutomatically) return "blue5.png";
  const std::int64_t seconds = integerValue(sortNumber);
  if (seconds <= -secondsPerDay) return "red5.png";
  return seconds / secondsPerDay > dueSoonDays ? "green5.png" : "yellow5.png";
}

}  // namespace

// "Credticard" and "Furtinure" are the names of the pictures; deliberate.
const std::vector<CatalogueIcon>& iconCatalogue() {
  static const std::vector<CatalogueIcon> catalogue = {
      {"32x32-House", "Mortgage, Rent & Home"},
      {"32x32-Credticard-A", "Credit Card - General"},
      {"32x32-Credticard-B", "Credit Card - Other"},
      {"32x32-Vehicle", "Car"},
      {"32x32-Insurance", "Insurance"},
      {"32x32-Smartphone", "Cell Phone & iPhone"},
      {"32x32-Phone", "Phone"},
      {"32x32-Medicine", "Medical"},
      {"32x32-Internet", "Internet"},
      {"32x32-Electric-Bill", "Electric & Utility"},
      {"32x32-Gas", "Gas"},
      {"32x32-Water", "Water"},
      {"32x32-Trash", "Trash"},
      {"32x32-Computer", "Computer"},
      {"32x32-Childcare", "Baby & Childcare"},
      {"32x32-Gym-Membership", "Gym & Sports"},
      {"32x32-Subscriptions", "Subscription"},
      {"32x32-Student-Loan", "School & Student Loans"},
      {"32x32-Television", "Television & Video"},
      {"32x32-Furtinure", "Furniture"},
      {"32x32-Appliance", "Appliance"},
      {"32x32-Landscaping", "Landscaping & Lawn"},
      {"32x32-Home-Alarm-System", "Security & Alarm"},
      {"32x32-Donations", "Donations"},
      {"32x32-Legal", "Legal"},
      {"32x32-Travel", "Business & Travel"},
      {"32x32-Post-Office-Box", "Mail & Post Office Box"},
      {"32x32-LockerSafe-Deposit", "Locker & Deposit Box"},
      {"32x32-Shopping", "Shopping"},
      {"32x32-Ticket", "Ticket"},
      {"32x32-Taxes", "Taxes & General"},
  };
  return catalogue;
}

std::string QMBillsLoader::createDueIconWithSortNumberAndPaymentType(const Value* sortNumber,
                                                                     const Value* payType) const {
  return dueIcon(sortNumber, payType, integerSetting(platform_.defaults, key::DueSoonDays));
}

std::string QMBillsLoader::createDueIconForExtensionWithSortNumberAndPaymentType(const Value* sortNumber,
                                                                                 const Value* payType) const {
  UserDefaults* group = platform_.groupDefaults;
  const std::int64_t stored = group == nullptr ? 0 : integerSetting(*group, key::DueSoonDays);
  return dueIcon(sortNumber, payType, stored == 0 ? defaultWidgetHorizonInDays : stored);
}

std::string QMBillsLoader::calculateIconWithDueDateNumber(const Value* sortNumber) const {
  constexpr std::int32_t fifteenDays = 1296000;
  const std::int32_t seconds = int32Value(sortNumber);
  // Unlike the current set this one is red from the first second; deliberate.
  if (seconds < 0) return "red.png";
  return seconds < fifteenDays ? "yellow.png" : "green.png";
}

std::int64_t QMBillsLoader::getIndexForIcon(std::string_view olderName) const {
  const auto found = std::find(olderIconNames.begin(), olderIconNames.end(), olderName);
  return found == olderIconNames.end() ? 0 : found - olderIconNames.begin();
}

std::optional<QMBillsLoader::IconTitle> QMBillsLoader::getTitleForIcon(std::string_view imageName) const {
  const auto& catalogue = iconCatalogue();
  const auto found = std::find_if(catalogue.begin(), catalogue.end(),
                                  [&](const CatalogueIcon& icon) { return icon.imageName == imageName; });
  if (found == catalogue.end()) return std::nullopt;
  return IconTitle{found - catalogue.begin(), std::string(found->title)};
}

}  // namespace tallyvane
