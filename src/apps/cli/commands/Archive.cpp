#include <memory>

#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

void archive(Session& session, const std::string& named) {
  const Platform& platform = session.platform;
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, named, {activeBills});
        QMBill{platform}.archiveBillWithBid(bill.bid);
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
  sayDone(session, marked("Archived \"{}\""), bill.bid);
}

}  // namespace

void addArchive(CLI::App& app, Invocation& invocation) {
  auto bill = std::make_shared<std::string>();
  CLI::App* command = addCommand(
      app, invocation, {"archive", marked("Put a bill aside; restore brings it back"), "tallyvane archive Rent"},
      [bill](Session& session) { archive(session, *bill); });
  command->add_option("BILL", *bill, billHelp)->required();
}

}  // namespace tallyvane::cli
