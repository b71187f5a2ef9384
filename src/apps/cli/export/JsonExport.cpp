#include "cli/Json.h"
#include "cli/export/Exports.h"
#include "cli/terminal/DisplayText.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

std::string jsonOf(const Platform& platform, const std::vector<ListedBill>& bills) {
  const QMBillsLoader loader{platform};
  Json list = Json::array();
  for (const ListedBill& bill : bills) {
    Dictionary row = bill.content;
    row.set(key::Bid, bill.bid);
    row.set(key::HumanRepeat, loader.createHumanRepeatWithArray(row.get<Array>(key::Repeat)).value_or(std::string()));
    Json json = billJson(platform, row, bill.group.word);
    for (const char* dependsOnToday : {"movedOffWeekend", "daysUntilDue", "due"}) json.erase(dependsOnToday);
    list.push_back(std::move(json));
  }
  return escapedForTerminal(Json{{"bills", std::move(list)}}.dump(2, ' ', false, Json::error_handler_t::replace)) +
         "\n";
}

}  // namespace tallyvane::cli
