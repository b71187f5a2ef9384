#include <memory>

#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillOptions.h"
#include "cli/commands/Commands.h"
#include "cli/input/TextInput.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"
#include "storage/QMUIDMaker.h"

namespace tallyvane::cli {

namespace {

struct Options : BillOptions {
  std::string name;
};

/// Every property is set: the model ends a bill's file at the first one that is not.
QMBill newBill(const Platform& platform, const std::string& name, const BillFields& fields) {
  QMBill bill{platform};
  bill.name = name;
  bill.icon = fields.icon.value_or("32x32-Taxes");
  bill.dueDate = fields.dueDate;
  bill.repeat = fields.repeat;
  bill.average = 0.0;
  bill.lastPayment = distantPast;  // only a payment after the last one counts as the latest
  bill.totalPaid = 0.0;
  bill.remindMe = fields.remindMe.value_or(false);
  bill.paySite = fields.paySite.value_or("");
  bill.paymentList = Array();
  bill.bid = QMUIDMaker{platform.random}.makeUID();
  bill.reminderDays = fields.reminderDays.value_or(0);
  bill.balance = fields.balance.value_or(0);
  bill.amount = fields.amount.value_or(0);
  bill.payType = fields.automatic.value_or(false) ? 1 : 0;
  bill.interest = fields.interest.value_or(0);
  bill.notes = fields.notes.value_or("");
  bill.tags = arrayOf(fields.tags.value_or(std::vector<std::string>()));
  bill.rev = 0.0;
  return bill;
}

void add(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const std::string name = nameInput(options.name, translated("A bill's name must not be empty."));
  QMBill bill = newBill(platform, name, fieldsFrom(platform, options));
  session.write(
      [&] {
        requireReadableData(platform);
        if (!options.force) requireUnusedName(platform, name, "", {activeBills, archivedBills});
        bill.writeBill(false);
      },
      [&] { agreeWithFiles(platform, *bill.bid, {name}); });
  sayDone(session, marked("Added \"{}\""), *bill.bid);
}

}  // namespace

void addAdd(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command =
      addCommand(app, invocation,
                 {"add", marked("Add a bill"),
                  "tallyvane add Rent --due 2027-03-01 --repeat monthly --amount 900 --tag Home --remind 3"},
                 [options](Session& session) { add(session, *options); });
  command->add_option("NAME", options->name, "What the bill is called")->required();
  addBillOptions(*command, *options);
  for (const char* needed : {"--due", "--repeat", "--amount"}) command->get_option(needed)->required();
}

}  // namespace tallyvane::cli
