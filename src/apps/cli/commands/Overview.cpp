#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>

#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Fields.h"
#include "cli/terminal/Table.h"
#include "common/PreviousVersion.h"
#include "common/Sentences.h"
#include "foundation/NumberReading.h"
#include "schedule/SortByDueDate.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// The choices of the display range and of the group, in their order.
constexpr std::array<const char*, 4> ranges = {"5", "14", "30", "all"};

struct Options {
  std::string range = "all";
  std::string group = "active";
  std::string tag;
  bool hideAutomatic = false;
};

Group groupOf(const Options& options) {
  return *std::find_if(std::begin(allGroups), std::end(allGroups),
                       [&](const Group& group) { return group.word == options.group; });
}

/// A title and the rows under it. The last one, of bills without a due date, has the title "No due date".
struct Section {
  std::string title;
  std::vector<Dictionary> rows;
};

constexpr std::int64_t everyDay = 10000;  ///< what the range "all" reaches; later bills are then shown too

bool isShown(const Platform& platform, const Options& options, const Dictionary& row) {
  if (options.hideAutomatic && isPaidAutomatically(row)) return false;
  const Date* due = row.get<Date>(key::DueDate);
  const auto choice = std::find(ranges.begin(), ranges.end(), options.range) - ranges.begin();
  const std::int64_t reach = QMBillsLoader{platform}.returnBillsToDisplayFromIndex(static_cast<std::uint64_t>(choice));
  return due == nullptr || reach == everyDay || daysUntil(platform, *due) <= reach;
}

/// The rows in the model's sections. Sorted by due date, the rows of one section stand together.
std::vector<Section> sectionsOf(const Platform& platform, const std::vector<Dictionary>& rows) {
  std::vector<Dictionary> dated = sortedByDueDate(rows);
  const auto undated = std::stable_partition(
      dated.begin(), dated.end(), [](const Dictionary& row) { return row.get<Date>(key::DueDate) != nullptr; });
  const Dictionary details = QMBillsLoader{platform}.dataSourceDetailsForDataSource(dated);
  std::vector<Section> sections;
  auto next = dated.begin();
  const Array counts = details.valueOr("RowsPerSection", Array());
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const auto end = next + integerValue(&counts[i]);
    sections.push_back({details.valueOr(fmt::format("Section{}", i + 1), std::string()), {next, end}});
    next = end;
  }
  if (undated != dated.end()) sections.push_back({marked("No due date"), {undated, dated.end()}});
  return sections;
}

void printTable(Session& session, const std::vector<Section>& sections) {
  const QMBillsLoader loader{session.platform};
  Table table({{marked("Bill"), false, 16, 0},
               {marked("Due"), false, 0, 0},
               {marked("Date"), false, 0, 2},
               {marked("Amount"), true, 0, 1},
               {marked("Repeats"), false, 0, 3}});
  for (const Section& section : sections) {
    table.startSection(section.title);
    for (const Dictionary& row : section.rows) {
      const std::string due = row.valueOr(key::HumanDueDate, std::string());
      const Value amount = loader.getEstimatedAmountDueForBill(row);
      table.add({row.valueOr(key::Name, std::string()), Cell(due, due, colourOf(row)),
                 dueDateCell(session.platform, row), amountCell(session.platform, &amount),
                 row.valueOr(key::HumanRepeat, std::string())});
    }
  }
  table.print(session.console);
}

void printSections(Session& session, const Options& options, const std::vector<Section>& sections) {
  Json list = Json::array();
  for (const Section& section : sections) {
    Json bills = Json::array();
    for (const Dictionary& row : section.rows) bills.push_back(billJson(session.platform, row, options.group));
    list.push_back({{"title", section.title}, {"bills", bills}});
  }
  printJson(session.console, {{"group", options.group}, {"sections", list}});
}

std::string noneTagged(const Group& group) {
  if (group.key == key::ActiveBills) return translated("No active bill has this tag.");
  if (group.key == key::ArchivedBills) return translated("No archived bill has this tag.");
  return translated("No deleted bill has this tag.");
}

std::string noneAtAll(const Group& group) {
  if (group.key == key::ActiveBills) return translated("There are no active bills.");
  if (group.key == key::ArchivedBills) return translated("There are no archived bills.");
  return translated("There are no deleted bills.");
}

void sayNothingToShow(Session& session, const Options& options, bool hasRows) {
  if (hasRows) return session.console.line(translated("No bill is due within this range."));
  if (!options.tag.empty()) return session.console.line(noneTagged(groupOf(options)));
  session.console.line(noneAtAll(groupOf(options)));
  if (options.group != activeBills.word) return;
  if (const auto folder = programs::folderToOfferForImport(session.platform))
    return session.console.line(
        printable(sentence("Those of the previous version are in {}. Bring them in: tallyvane import", *folder)));
  session.console.line(sentence("Add one: {}", "tallyvane add Rent --due 2027-03-01 --repeat monthly --amount 900"));
}

void showOverview(Session& session, const Options& options) {
  QMBillsLoader loader{session.platform};
  const Group group = groupOf(options);
  requireReadableData(session.platform);
  std::vector<Dictionary> rows;
  if (group.key == activeBills.key && options.tag.empty()) {
    rows = loader.loadBills();
  } else {
    session.list([&] {
      rows = loader.loadBillsInGroupWithTag(group.key, options.tag);
      // That replaced the widget's snapshot by what was listed; the panel shows the active bills.
      (void)loader.loadBills();
    });
  }

  const bool hasRows = !rows.empty();
  std::erase_if(rows, [&](const Dictionary& row) { return !isShown(session.platform, options, row); });
  const std::vector<Section> sections = sectionsOf(session.platform, rows);
  if (session.json) return printSections(session, options, sections);
  if (sections.empty()) return sayNothingToShow(session, options, hasRows);
  printTable(session, sections);
}

/// Two things to do and a third that depends on what is here, each as it is typed.
void welcome(Session& session) {
  Console& console = session.console;
  const auto suggest = [&](const std::string& command, const std::string& text) {
    console.line();
    console.line("  " + console.painted(command, Colour::bold));
    console.line("      " + printable(text));
  };
  printParagraph(console,
                 translated("Welcome to Tallyvane, which keeps your recurring bills and tells you which are due."));
  printParagraph(console, translated("There are no bills yet. Three things to begin with:"));
  suggest("tallyvane add Rent --due 2027-03-01 --repeat monthly --amount 900", translated("adds your first bill."));
  suggest("tallyvane tour", translated("shows in a few steps how it works, with made-up bills."));
  if (const auto folder = programs::folderToOfferForImport(session.platform))
    return suggest("tallyvane import", sentence("brings in those of the previous version in {}.", *folder));
  suggest("tallyvane --help", translated("lists all commands."));
}

/// No bill, not even one put aside or deleted.
bool isNew(const Platform& platform) {
  requireReadableData(platform);
  return allBills(platform).empty();
}

}  // namespace

void addOverview(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(
      app, invocation,
      {"overview", marked("List the bills that are overdue, due soon and due later"), "tallyvane overview --range 14"},
      [options](Session& session) { showOverview(session, *options); });
  command->add_option("--range", options->range, "How many days ahead: 5, 14, 30 or all")
      ->check(CLI::IsMember(std::vector<std::string>(ranges.begin(), ranges.end())));
  command->add_option("--group", options->group, "Which bills: active, archived or deleted")
      ->check(CLI::IsMember({"active", "archived", "deleted"}));
  command->add_option("--tag", options->tag, "Only bills with this tag")->type_name("TAG");
  command->add_flag("--hide-automatic", options->hideAutomatic, "Leave out bills that are paid automatically");
}

void runDefaultOverview(Session& session) {
  const bool welcomes = !session.json && session.console.interactive() && isNew(session.platform);
  return welcomes ? welcome(session) : showOverview(session, Options());
}

}  // namespace tallyvane::cli
