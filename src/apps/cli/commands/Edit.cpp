#include <memory>

#include "cli/Failure.h"
#include "cli/bills/BillChange.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillOptions.h"
#include "cli/commands/Commands.h"
#include "cli/input/TextInput.h"
#include "common/Sentences.h"
#include "storage/QMBill.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options : BillOptions {
  std::string bill;
  std::optional<std::string> name;
  bool dontRemind = false;
  bool notAutomatic = false;
};

struct Change {
  std::optional<std::string> name;
  BillFields fields;
};

Change changeFrom(const Platform& platform, const Options& options) {
  Change change;
  if (options.name) change.name = nameInput(*options.name, translated("A bill's name must not be empty."));
  change.fields = fieldsFrom(platform, options);
  if (options.dontRemind) change.fields.remindMe = false;
  if (options.notAutomatic) change.fields.automatic = false;
  if (!change.name && change.fields == BillFields())
    wrongUsage(translated("Say what to change.") + " " + sentence("See: {}", "tallyvane edit --help"));
  return change;
}

/// Works on the bill's own file, whose due date is the stored one, and leaves it in the list where it stands.
void rewrite(const Platform& platform, const ListedBill& bill, const Change& change) {
  Dictionary content = bill.content;
  content.set(key::Bid, bill.bid);
  apply(change.fields, content);
  if (change.name && *change.name != bill.name()) {
    content.set(key::Name, *change.name);
    removeReminders(platform, bill.bid, bill.name());  // they would no longer be found
  }
  QMBill{platform}.rewriteSpecificBill(content);
  // Rewriting made reminders again; a bill that is put aside has none.
  if (bill.group.key != key::ActiveBills) removeReminders(platform, bill.bid, change.name.value_or(bill.name()));
  if (change.fields.tags) QMBillsLoader{platform}.saveListOfTagsWithTags(*change.fields.tags);
}

void edit(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Change change = changeFrom(platform, options);
  ListedBill bill;
  session.write(
      [&] {
        bill = findBill(platform, options.bill, {activeBills, archivedBills});
        if (change.name && !options.force) {
          requireUnusedName(platform, *change.name, bill.bid, {activeBills, archivedBills});
        }
        rewrite(platform, bill, change);
      },
      [&] {
        agreeWithFiles(platform, bill.bid, {bill.name(), change.name.value_or(bill.name())});
      });
  sayDone(session, marked("Changed \"{}\""), bill.bid);
}

}  // namespace

void addEdit(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation, {"edit", marked("Change a bill; what is not named stays"), "tallyvane edit Rent --amount 950"},
      [options](Session& session) { edit(session, *options); });
  command->add_option("BILL", options->bill, billHelp)->required();
  command->add_option("--name", options->name, "Its new name");
  addBillOptions(*command, *options);
  command->add_flag("--no-remind", options->dontRemind, "No reminders")->excludes("--remind");
  command->add_flag("--no-auto", options->notAutomatic, "Not paid automatically")->excludes("--auto");
}

}  // namespace tallyvane::cli
