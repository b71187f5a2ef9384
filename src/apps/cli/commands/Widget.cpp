#include <memory>

#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/bills/Groups.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "foundation/Markup.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

/// What the snapshot says now.
struct Snapshot {
  std::vector<Dictionary> rows;
  std::int64_t count = 0;
  std::optional<Dictionary> next;
};

Snapshot readSnapshot(const Platform& platform) {
  QMBillsLoader loader{platform};
  Snapshot snapshot;
  snapshot.rows = loader.loadBillsForExtension();
  snapshot.count = loader.getBillsDueSoonForExtensionWithBills(snapshot.rows);
  snapshot.next = loader.loadDataForExtension();
  return snapshot;
}

/// The panel reads it as markup.
std::string tooltipLine(const Dictionary& row) {
  return markupEscaped(
      printable(row.valueOr(key::Name, std::string()) + ": " + row.valueOr(key::HumanDueDate, std::string())));
}

/// An empty text hides the module.
void printForPanel(Session& session, const Snapshot& snapshot) {
  std::string tooltip;
  bool overdue = false;
  for (const Dictionary& row : snapshot.rows) {
    tooltip += (tooltip.empty() ? "" : "\n") + tooltipLine(row);
    overdue = overdue || row.valueOr(key::DueIcon, std::string()) == "red5.png";
  }
  const std::string state = overdue ? "overdue" : snapshot.count > 0 ? "due-soon" : "none";
  const std::string text = snapshot.count > 0 ? std::to_string(snapshot.count) : "";
  printJsonLine(session.console, {{"text", text}, {"tooltip", tooltip}, {"class", state}, {"alt", state}});
}

void printSnapshotJson(Session& session, const Snapshot& snapshot) {
  Json bills = Json::array();
  for (const Dictionary& row : snapshot.rows) bills.push_back(billJson(session.platform, row, activeBills.word));
  const Json next = snapshot.next ? billJson(session.platform, *snapshot.next, activeBills.word) : Json(nullptr);
  printJson(session.console, {{"count", snapshot.count}, {"next", next}, {"bills", bills}});
}

void showWidget(Session& session, bool forPanel) {
  (void)requireDataFolder(session.platform);
  const Snapshot snapshot = readSnapshot(session.platform);
  if (forPanel) return printForPanel(session, snapshot);
  if (session.json) return printSnapshotJson(session, snapshot);
  if (snapshot.rows.empty()) return session.console.line(translated("No bill is due soon."));
  Table table({{marked("Bill"), false, 16, 0}, {marked("Due"), false, 0, 0}, {marked("Date"), false, 0, 1}});
  for (const Dictionary& row : snapshot.rows) {
    const std::string due = row.valueOr(key::HumanDueDate, std::string());
    table.add(
        {row.valueOr(key::Name, std::string()), Cell(due, due, colourOf(row)), dueDateCell(session.platform, row)});
  }
  table.print(session.console);
}

}  // namespace

void addWidget(CLI::App& app, Invocation& invocation) {
  auto forPanel = std::make_shared<bool>(false);
  CLI::App* command =
      addCommand(app, invocation,
                 {"widget", marked("Show the bills due soon from the widget's snapshot, reading no bill file"),
                  "tallyvane widget --waybar"},
                 [forPanel](Session& session) { showWidget(session, *forPanel); });
  command->add_flag("--waybar", *forPanel, "Print one line of JSON for a custom module of the panel waybar");
}

}  // namespace tallyvane::cli
