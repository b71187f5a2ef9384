#include "cli/import/OldBills.h"

#include "cli/Failure.h"
#include "cli/bills/BillText.h"
#include "cli/bills/Groups.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "import/QMImportManager.h"
#include "platform/PropertyListFile.h"
#include "schedule/RepeatRule.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// The payments of such a file cannot be told apart from their notes and receipts.
bool lacksNotesOrReceipts(const Dictionary& old, std::size_t payments) {
  const auto isShort = [&](std::string_view key) {
    const Array* list = old.get<Array>(key);
    return list != nullptr && list->size() < payments;
  };
  return isShort("Pay_Notes") || isShort("Pay_Attachment");
}

OldBill oldBill(const Platform& platform, const std::string& folder, const std::string& name) {
  const QMImportManager manager{platform};
  const auto record = readPropertyListFile<Dictionary>(platform.files, platform.log, folder + "/Data/" + name);
  const Dictionary old = record.value_or(Dictionary());
  const auto text = [&](std::string_view key) { return old.valueOr(key, std::string()); };
  OldBill bill{name, manager.billNameOf(name), manager.convertIconWithIcon(text("Icon")), {}, "", 0, false, false,
               false};
  bill.readable = record.has_value();
  if (const Date* due = old.get<Date>("Next_Due")) bill.due = *due;
  if (const Array* amounts = old.get<Array>("Pay_Amounts")) bill.payments = amounts->size();
  if (const Value* count = old.find("Repeat_a")) {
    const std::int64_t unit = manager.calculateRepeatBWithString(text("Repeat_b"));
    const Array rule{*count, unit};
    bill.repeats = QMBillsLoader{platform}.createHumanRepeatWithArray(&rule).value_or(std::string());
    if (unit == UnitKind::never && bill.payments > 0) bill.due = distantFuture;
  }
  bill.active = boolValue(old, "Is_Active");
  bill.stopsImport = lacksNotesOrReceipts(old, bill.payments);
  return bill;
}

Cell stateOf(const OldBill& bill) {
  if (bill.stopsImport) return wordCell(marked("stops the import: fewer notes or receipts than payments"));
  if (!bill.readable) return wordCell(marked("archived; not readable"));
  return wordCell(std::string(bill.active ? activeBills.word : archivedBills.word));
}

}  // namespace

std::vector<OldBill> oldBills(const Platform& platform, const std::string& folder) {
  std::vector<OldBill> bills;
  const Result<std::vector<std::string>> names = platform.files.list(folder + "/Data");
  if (!names) couldNot(sentence("The old bills cannot be listed: {}.", names.error()));
  for (const std::string& name : *names) {
    if (!name.starts_with('.')) bills.push_back(oldBill(platform, folder, name));
  }
  return bills;
}

Table tableOf(const Platform& platform, const std::vector<OldBill>& bills) {
  const QMBillsLoader loader{platform};
  Table table({{marked("File"), false, 12, 3},
               {marked("Bill"), false, 12},
               {marked("Due")},
               {marked("Repeats"), false, 0, 2},
               {marked("Payments"), true},
               // translators: what an old file becomes: an active bill or an archived one
               {marked("Becomes")}});
  for (const OldBill& bill : bills) {
    const Cell due =
        bill.due ? Cell(loader.createDueDateStringWithDate(*bill.due), isoDay(platform, *bill.due)) : Cell("");
    table.add({bill.file, bill.name, due, bill.repeats, std::to_string(bill.payments), stateOf(bill)});
  }
  return table;
}

Json jsonOf(const Platform& platform, const std::vector<OldBill>& bills) {
  Json list = Json::array();
  for (const OldBill& bill : bills) {
    list.push_back({{"file", bill.file},
                    {"name", bill.name},
                    {"icon", bill.icon},
                    {"dueDate", bill.due ? Json(isoDay(platform, *bill.due)) : Json(nullptr)},
                    {"repeats", bill.repeats},
                    {"payments", bill.payments},
                    {"state", bill.active ? "active" : "archived"},
                    {"readable", bill.readable},
                    {"stopsImport", bill.stopsImport}});
  }
  return list;
}

}  // namespace tallyvane::cli
