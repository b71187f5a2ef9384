#include <memory>

#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

void deleteBill(Session& session, const std::string& named) {
  const Platform& platform = session.platform;
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, named, {activeBills, archivedBills});
        QMBill{platform}.deleteBillWithBid(bill.bid);
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
  sayDone(session, marked("Deleted \"{}\""), bill.bid);
}

}  // namespace

void addDelete(CLI::App& app, Invocation& invocation) {
  auto bill = std::make_shared<std::string>();
  CLI::App* command = addCommand(
      app, invocation,
      {"delete", marked("Delete a bill; its file is kept and restore brings it back"), "tallyvane delete Rent"},
      [bill](Session& session) { deleteBill(session, *bill); });
  command->add_option("BILL", *bill, billHelp)->required();
}

}  // namespace tallyvane::cli
