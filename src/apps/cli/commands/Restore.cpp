#include <memory>

#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string bill;
  bool force = false;
};

/// Back among the active bills. The model restores archived bills only; a deleted one is moved, and the lists are
/// mirrored then, as the model does after its own moves.
void moveBack(const Platform& platform, const ListedBill& bill) {
  QMBill mover{platform};
  if (bill.group.key == archivedBills.key) return mover.restoreBillWithBid(bill.bid);
  mover.moveBillFromIndexToIndexNotUsingIndexAndDisableBill(bill.bid, key::DeletedBills, key::ActiveBills,
                                                            key::ArchivedBills, false);
  mirrorLists(platform);
}

void restore(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, options.bill, {archivedBills, deletedBills});
        if (!options.force) requireUnusedName(platform, bill.name(), bill.bid, {activeBills});
        moveBack(platform, bill);
        bill.content.set(key::Bid, bill.bid);
        QMBill{platform}.rewriteSpecificBill(bill.content);  // moving makes no reminders; this does
      },
      [&] { agreeWithFiles(platform, bill.bid, {bill.name()}); });
  sayDone(session, marked("Restored \"{}\""), bill.bid);
}

}  // namespace

void addRestore(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation, {"restore", marked("Bring back an archived or deleted bill"), "tallyvane restore Rent"},
      [options](Session& session) { restore(session, *options); });
  command->add_option("BILL", options->bill, billHelp)->required();
  command->add_flag("--force", options->force, "Also when an active bill has the same name");
}

}  // namespace tallyvane::cli
