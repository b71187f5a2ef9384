#include "cli/bills/BillOptions.h"

#include "cli/Failure.h"
#include "cli/input/AmountInput.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/IconInput.h"
#include "cli/input/RepeatInput.h"
#include "cli/input/TextInput.h"
#include "storage/Keys.h"
#include "storage/QMBill.h"

namespace tallyvane::cli {

namespace {

constexpr std::int64_t longestReminder = 366;

void set(Dictionary& bill, std::string_view key, const std::optional<Value>& value) {
  if (value) bill.set(key, *value);
}

}  // namespace

void addBillOptions(CLI::App& command, BillOptions& options) {
  command
      .add_option("--due", options.due, "When it is due next: 2027-03-01, \"1 Mar\", tomorrow, +10d, \"next friday\"")
      ->type_name("DATE");
  command
      .add_option("--repeat", options.repeat,
                  "How it repeats: weekly, \"twice a month\", monthly, quarterly, \"every 2 weeks\", never")
      ->type_name("RULE");
  command.add_option("--amount", options.amount, "The expected amount")->type_name("N");
  command.add_option("--icon", options.icon, "Title or number of its icon; \"tallyvane icons\" lists them")
      ->type_name("ICON");
  command.add_option("--tag", options.tags, "A tag; may be given several times")
      ->allow_extra_args(false)
      ->type_name("TAG");
  command.add_option("--remind", options.remind, "Remind so many days before")->type_name("DAYS");
  command.add_flag("--auto", options.automatic, "It is paid automatically");
  command.add_option("--site", options.site, "Web address where it is paid")->type_name("URL");
  command.add_option("--balance", options.balance, "Outstanding balance")->type_name("N");
  command.add_option("--interest", options.interest, "Interest rate in per cent")->type_name("PERCENT");
  command.add_option("--notes", options.notes, "Free notes")->type_name("NOTES");
  command.add_flag("--force", options.force, "Also when another bill has the same name");
}

BillFields fieldsFrom(const Platform& platform, const BillOptions& options) {
  const Region& region = platform.region;
  BillFields fields;
  if (options.due) fields.dueDate = understood(readDueDate(region, platform.clock.now(), *options.due));
  if (options.repeat) fields.repeat = understood(readRepeat(*options.repeat));
  if (options.amount) fields.amount = understood(readAmount(region, *options.amount));
  if (options.icon) fields.icon = understood(readIcon(region, *options.icon));
  if (options.remind) {
    fields.remindMe = true;
    fields.reminderDays = countInput("--remind", *options.remind, 0, longestReminder);
  }
  if (options.site) {
    fields.paySite = QMBill{platform}.getCorrectedPaymentURL(lineInput(*options.site));
  }
  if (options.balance) fields.balance = understood(readAmount(region, *options.balance));
  if (options.interest) fields.interest = understood(readInterest(region, *options.interest));
  if (options.notes) fields.notes = notesInput(*options.notes);
  if (!options.tags.empty()) fields.tags = tagsInput(options.tags);
  if (options.automatic) fields.automatic = true;
  return fields;
}

void apply(const BillFields& fields, Dictionary& bill) {
  set(bill, key::DueDate, fields.dueDate);
  set(bill, key::Repeat, fields.repeat);
  set(bill, key::Amount, fields.amount);
  set(bill, key::Icon, fields.icon);
  set(bill, key::RemindMe, fields.remindMe);
  set(bill, key::ReminderDays, fields.reminderDays);
  set(bill, key::PaySite, fields.paySite);
  set(bill, key::Balance, fields.balance);
  set(bill, key::Interest, fields.interest);
  set(bill, key::Notes, fields.notes);
  if (fields.tags) bill.set(key::Tags, arrayOf(*fields.tags));
  if (fields.automatic) bill.set(key::PayType, *fields.automatic ? 1 : 0);
}

}  // namespace tallyvane::cli
