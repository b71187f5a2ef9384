#include "helper/QMHelperMenulet.h"

#include "foundation/NumberReading.h"
#include "foundation/Texts.h"
#include "schedule/SortByDueDate.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

constexpr double nameSize = 13.0;
constexpr double dueTextSize = 9.0;

/// Styles the first occurrence of the part in the text, wherever that is; an empty part has none.
void styleFirst(StyledText& styled, const std::string& part, double size, bool grey) {
  const auto at = styled.text.find(part);
  if (part.empty() || at == std::string::npos) return;
  const std::string_view before = std::string_view(styled.text).substr(0, at);
  styled.styles.push_back({utf16Length(before), utf16Length(part), "Lucida Grande", size, grey});
}

MenuEntry billEntry(const Dictionary& row) {
  const std::string name = row.valueOr(key::Name, std::string());
  const std::string human = row.valueOr(key::HumanDueDate, std::string());
  MenuEntry entry;
  entry.kind = MenuEntry::Kind::bill;
  entry.title = name;
  entry.action = "menuItemSelected:";
  entry.styledTitle.text = name + "\n" + human;
  styleFirst(entry.styledTitle, name, nameSize, false);
  // A name that contains the due text takes its style there; deliberate.
  styleFirst(entry.styledTitle, human, dueTextSize, true);
  entry.representedObject = row.valueOr(key::Bid, std::string());
  entry.imageName = row.valueOr(key::Icon, std::string());
  return entry;
}

bool belongsInMenu(const Platform& platform, const Dictionary& row) {
  const Date* due = row.get<Date>(key::DueDate);
  if (due == nullptr) return false;
  const std::int64_t horizon = integerSetting(platform.defaults, key::DueSoonDays);
  const bool leavesOutAutomatic = integerSetting(platform.defaults, key::DontCountAuto) != 0;
  const std::int64_t days = QMBillsLoader{platform}.getDaysApartWithDateAndCurrentDate(*due, platform.clock.now());
  return days <= horizon && !(leavesOutAutomatic && integerValue(row, key::PayType) == key::paidAutomatically);
}

}  // namespace

void QMHelperMenulet::createMenu() {
  statusItem = platform_.statusBar.statusItemWithLength(variableStatusItemLength);
  statusItem->setHighlightMode(true);
  statusItem->setToolTip("Tallyvane");
  statusItem->setEnabled(true);
  menuIcon = "mnblack";
  statusItem->setImage(menuIcon);
  theMenu = std::make_shared<Menu>();
  statusItem->setMenu(*theMenu);
  statusItem->setAlternateImage("mnwhite");
  platform_.log.line("Menulet initialized from helper");
}

void QMHelperMenulet::setStatusTitle(const std::string& text) {
  const std::string shown = boolSetting(platform_.defaults, key::ShouldDisplayStatusTitle) ? text : std::string();
  if (statusItem) statusItem->setAttributedTitle({shown, {{0, utf16Length(shown), "", 0.0, false}}});
}

void QMHelperMenulet::updateMenu(const void* /*sender*/) {}

void QMHelperMenulet::updateMenuWithDataSource(const std::vector<Dictionary>& rows) {
  // Switched off, an item made earlier is neither removed nor changed; deliberate.
  if (!boolSetting(platform_.defaults, key::EnableStartAtLoginMenu)) return;
  if (!statusItem) createMenu();
  attachDefaultItemsToMenu();
  attachBillsToMenuWithData(rows);
}

void QMHelperMenulet::attachDefaultItemsToMenu() {
  MenuEntry command;
  command.kind = MenuEntry::Kind::command;
  command.title = platform_.region.localized("Show Tallyvane");
  command.action = "showTallyvane";
  if (theMenu) theMenu->entries.clear();
  append({command, MenuEntry{}});
}

void QMHelperMenulet::attachBillsToMenuWithData(const std::vector<Dictionary>& rows) {
  std::vector<MenuEntry> bills;
  for (const Dictionary& row : sortedByDueDate(rows)) {
    if (belongsInMenu(platform_, row)) bills.push_back(billEntry(row));
  }
  const std::size_t count = bills.size();
  append(std::move(bills));
  setStatusTitle(count > 0 ? std::to_string(count) : std::string());
}

void QMHelperMenulet::addMenuItemWithDictionary(const Dictionary& row) { append({billEntry(row)}); }

void QMHelperMenulet::menuWillHighlightItem(const Menu& /*menu*/, const MenuEntry* /*item*/) {}

void QMHelperMenulet::append(std::vector<MenuEntry> entries) {
  if (!theMenu || !statusItem) return;
  theMenu->entries.insert(theMenu->entries.end(), entries.begin(), entries.end());
  statusItem->setMenu(*theMenu);
}

}  // namespace tallyvane
