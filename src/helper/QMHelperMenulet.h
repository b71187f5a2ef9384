#pragma once

#include <memory>
#include <string>
#include <vector>

#include "foundation/Value.h"
#include "platform/Platform.h"
#include "platform/StatusBar.h"

namespace tallyvane {

/// The status-bar menu of the bills due soon. The menu is a plain model; the status item shows it. The host makes one,
/// keeps it and calls updateMenuWithDataSource whenever the bills change.
class QMHelperMenulet {
 public:
  explicit QMHelperMenulet(const Platform& platform) : platform_(platform) {}

  std::shared_ptr<Menu> theMenu;           ///< made by createMenu
  std::shared_ptr<StatusItem> statusItem;  ///< none until createMenu has run
  std::string menuIcon;                    ///< name of the picture in the status bar

  void createMenu();
  /// Shows the text, or nothing where the user does not want the count.
  void setStatusTitle(const std::string& text);
  /// Does nothing; kept in the interface.
  void updateMenu(const void* sender);
  /// Rebuilds the menu from display rows, once the user wants one. Switched off, it leaves an earlier item as it is.
  void updateMenuWithDataSource(const std::vector<Dictionary>& rows);
  void attachDefaultItemsToMenu();
  /// Rows due within the horizon, by sort number; rows without a due date are left out.
  void attachBillsToMenuWithData(const std::vector<Dictionary>& rows);
  void addMenuItemWithDictionary(const Dictionary& row);
  /// Does nothing.
  void menuWillHighlightItem(const Menu& menu, const MenuEntry* item);

 private:
  /// Adds to the menu and shows it; without a status item there is no menu to change.
  void append(std::vector<MenuEntry> entries);

  const Platform& platform_;
};

}  // namespace tallyvane
