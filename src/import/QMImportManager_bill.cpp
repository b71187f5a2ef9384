#include <array>
#include <utility>

#include "foundation/NumberReading.h"
#include "foundation/Paths.h"
#include "import/QMImportManager.h"
#include "platform/PropertyListFile.h"
#include "schedule/RepeatRule.h"
#include "storage/QMBill.h"
#include "storage/QMUIDMaker.h"

namespace tallyvane {

namespace {

using Names = std::pair<std::string_view, std::string_view>;

// "Credticard", "Furtinure" and the small "house" are names that bills carry; deliberate.
constexpr std::array<Names, 28> icons{{{"bill_mail.png", "32x32-Post-Office-Box"},
                                       {"bill_rental.png", "32x32-LockerSafe-Deposit"},
                                       {"bill_travel.png", "32x32-Travel"},
                                       {"bill_tool.png", "32x32-Landscaping"},
                                       {"bill_audio.png", "32x32-Television"},
                                       {"bill_inbox.png", "32x32-Taxes"},
                                       {"bill_appliance.png", "32x32-Appliance"},
                                       {"bill_artwork.png", "32x32-Shopping"},
                                       {"bill_book.png", "32x32-Subscriptions"},
                                       {"bill_business.png", "32x32-Travel"},
                                       {"bill_car.png", "32x32-Vehicle"},
                                       {"bill_card1.png", "32x32-Credticard-A"},
                                       {"bill_card2.png", "32x32-Credticard-B"},
                                       {"bill_couch.png", "32x32-Furtinure"},
                                       {"bill_electric.png", "32x32-Electric-Bill"},
                                       {"bill_gas.png", "32x32-Gas"},
                                       {"bill_home.png", "32x32-house"},
                                       {"bill_insurance.png", "32x32-Insurance"},
                                       {"bill_internet.png", "32x32-Internet"},
                                       {"bill_medical.png", "32x32-Medicine"},
                                       {"bill_personal.png", "32x32-Shopping"},
                                       {"bill_phone.png", "32x32-Smartphone"},
                                       {"bill_recycle.png", "32x32-Trash"},
                                       {"bill_store.png", "32x32-Shopping"},
                                       {"bill_ticket.png", "32x32-Ticket"},
                                       {"bill_subscription.png", "32x32-Subscriptions"},
                                       {"bill_trashy.png", "32x32-Trash"},
                                       {"bill_water.png", "32x32-Water"}}};

constexpr std::array<std::pair<std::string_view, std::int64_t>, 5> units{{{"Weeks", UnitKind::weeks},
                                                                          {"Twice", UnitKind::twicePerMonth},
                                                                          {"Months", UnitKind::months},
                                                                          {"Days", UnitKind::days},
                                                                          {"Never", UnitKind::never}}};

std::optional<Value> valueOf(const Dictionary& record, std::string_view key) {
  const Value* value = record.find(key);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

/// A number given as text becomes the number that it begins with, and 0 when it begins with something else, a
/// currency's sign too; deliberate.
std::optional<Value> numberOf(const Dictionary& record, std::string_view key) {
  const Value* value = record.find(key);
  if (value != nullptr && value->is<std::string>()) return Value(floatValue(value));
  return valueOf(record, key);
}

Value firstPaymentDate(const Dictionary& record) {
  const Array* dates = record.get<Array>("Pay_Dates");
  return dates == nullptr || dates->empty() ? Value(distantPast) : dates->front();
}

/// Without a count the array ends before it begins.
Array repeatOf(const Dictionary& record, std::int64_t unit) {
  Array repeat;
  if (const Value* count = record.find("Repeat_a")) {
    repeat.push_back(*count);
    repeat.emplace_back(unit);
  }
  return repeat;
}

}  // namespace

std::string QMImportManager::billNameOf(std::string_view path) const {
  constexpr std::string_view extension = ".plist";
  std::string name = nameOf(path);
  for (std::size_t at = 0; (at = name.find(extension, at)) != std::string::npos;) name.erase(at, extension.size());
  return name;
}

std::string QMImportManager::convertIconWithIcon(std::string_view oldIcon) const {
  for (const auto& [old, current] : icons) {
    if (old == oldIcon) return std::string(current);
  }
  return "32x32-Shopping";
}

std::int64_t QMImportManager::calculatePayTypeWithString(std::string_view text) const {
  if (text == "Online") return 0;
  return text == "Automatic" ? 1 : 4;
}

std::int64_t QMImportManager::calculateRepeatBWithString(std::string_view text) const {
  for (const auto& [old, unit] : units) {
    if (old == text) return unit;
  }
  return UnitKind::weeks;
}

/// A file that is no property list leaves most properties unset; the bill's file then ends early.
void QMImportManager::importBill(const std::string& path, const std::string& dataPath) {
  const Dictionary record =
      readPropertyListFile<Dictionary>(platform_.files, platform_.log, path).value_or(Dictionary());
  const auto text = [&](std::string_view key) { return record.valueOr(key, std::string()); };
  const std::int64_t unit = calculateRepeatBWithString(text("Repeat_b"));
  QMBill bill{platform_};
  bill.name = billNameOf(path);
  platform_.log.line("Name: " + *bill.name);
  bill.bid = QMUIDMaker{platform_.random}.makeUID();
  bill.icon = convertIconWithIcon(text("Icon"));
  bill.dueDate = valueOf(record, "Next_Due");
  bill.repeat = repeatOf(record, unit);
  bill.average = numberOf(record, "Average_Paid");
  bill.lastPayment = firstPaymentDate(record);
  bill.totalPaid = calculateTotalPaidWithPayments(record.get<Array>("Pay_Notes"));
  bill.paymentList = createListOfPaymentsForDictionaryAtPath(record, dataPath);
  bill.remindMe = valueOf(record, "Alarm_On");
  bill.paySite = valueOf(record, "Pay_Location_a");
  if (const auto* site = record.get<std::string>("Pay_Location_a")) bill.paySite = bill.getCorrectedPaymentURL(*site);
  bill.reminderDays = valueOf(record, "Alarm_Days");
  bill.balance = valueOf(record, "Total_Balance");
  bill.payType = calculatePayTypeWithString(text("Pay_Type"));
  bill.interest = valueOf(record, "Interest_Rate");
  bill.notes = valueOf(record, "Pay_Bill_Note");
  bill.tags = valueOf(record, "Tags");
  bill.rev = 0.0F;
  bill.amount = numberOf(record, "Amount_Due");
  // A bill for once that was paid is never due again.
  if (!bill.paymentList->empty() && bill.repeat->size() > 1 && unit == UnitKind::never) bill.dueDate = distantFuture;
  platform_.log.line("Imported Bill: " + *bill.name);
  bill.writeBill(false);
  if (!boolValue(record, "Is_Active")) bill.archiveBillWithBid(*bill.bid);
}

}  // namespace tallyvane
