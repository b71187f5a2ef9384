#include <fmt/format.h>

#include "cli/Json.h"
#include "cli/TextStatusBar.h"
#include "cli/bills/BillLookup.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "helper/QMHelperMenulet.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

std::string_view kindOf(const MenuEntry& entry) {
  switch (entry.kind) {
    case MenuEntry::Kind::command:
      return "command";
    case MenuEntry::Kind::bill:
      return "bill";
    case MenuEntry::Kind::separator:
      break;
  }
  return "separator";
}

/// A bill's entry has two lines: its name, and when it is due.
std::string secondLineOf(const MenuEntry& entry) {
  const std::string& text = entry.styledTitle.text;
  return text.size() > entry.title.size() ? text.substr(entry.title.size() + 1) : std::string();
}

void printMenuJson(Console& console, const ShownStatusItem& item) {
  Json entries = Json::array();
  for (const MenuEntry& entry : item.menu.entries) {
    entries.push_back({{"kind", kindOf(entry)},
                       {"title", entry.title},
                       {"due", secondLineOf(entry)},
                       {"icon", entry.imageName},
                       {"id", entry.representedObject}});
  }
  printJson(console, {{"shown", item.exists}, {"title", item.title}, {"entries", entries}});
}

void printEntry(Console& console, const MenuEntry& entry) {
  if (!console.interactive()) {
    console.line(fmt::format("{}\t{}\t{}", kindOf(entry), printable(entry.title), printable(secondLineOf(entry))));
    return;
  }
  const int width = console.terminal().width;
  if (entry.kind == MenuEntry::Kind::separator) return console.line(fitted("──────────", width));
  console.line(fitted(printable(entry.title), width));
  if (entry.kind != MenuEntry::Kind::bill) return;
  console.line(console.painted(fitted("  " + printable(secondLineOf(entry)), width), Colour::dim));
}

void showMenu(Session& session) {
  requireReadableData(session.platform);
  TextStatusBar statusBar;
  const Platform shownAsText = withStatusBar(session.platform, statusBar);
  QMHelperMenulet menulet{shownAsText};
  menulet.updateMenuWithDataSource(QMBillsLoader{shownAsText}.loadBills());

  const ShownStatusItem& item = statusBar.shown();
  if (session.json) return printMenuJson(session.console, item);
  if (!item.exists)
    return session.console.line(translated("The status menu is switched off (EnableStartAtLoginMenu)."));
  session.console.line(session.console.interactive() ? sentence("Title: {}", item.title) : "title\t" + item.title);
  for (const MenuEntry& entry : item.menu.entries) printEntry(session.console, entry);
}

}  // namespace

void addMenu(CLI::App& app, Invocation& invocation) {
  addCommand(app, invocation, {"menu", marked("Show the status menu as text"), "tallyvane menu"}, showMenu);
}

}  // namespace tallyvane::cli
