#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tallyvane {

/// How a stretch of a styled text looks. Position and length count UTF-16 units.
struct TextStyle {
  std::size_t position = 0;
  std::size_t length = 0;
  std::string font;  ///< a family, or empty for the menu-bar font
  double size = 0;   ///< points; 0 is the font's default size
  bool grey = false;
  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

struct StyledText {
  std::string text;
  std::vector<TextStyle> styles;
  friend bool operator==(const StyledText&, const StyledText&) = default;
};

/// One entry of the status menu: a separator, a command or a bill.
struct MenuEntry {
  enum class Kind { separator, command, bill };
  Kind kind = Kind::separator;
  std::string title;
  StyledText styledTitle;
  std::string imageName;          ///< a picture of Resources; empty for none
  std::string action;             ///< the operation that choosing it asks for
  std::string keyEquivalent;      ///< always empty so far
  std::string representedObject;  ///< a bill's identifier
  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// The menu as data; what shows it is the status item that it is set on.
struct Menu {
  std::vector<MenuEntry> entries;
  friend bool operator==(const Menu&, const Menu&) = default;
};

/// One item in the desktop's status bar. It shows what it was last given until it is destroyed. A picture name that no
/// resource has shows nothing.
class StatusItem {
 public:
  virtual ~StatusItem() = default;
  virtual void setHighlightMode(bool on) = 0;
  virtual void setToolTip(const std::string& text) = 0;
  virtual void setEnabled(bool on) = 0;
  virtual void setImage(const std::string& name) = 0;
  virtual void setAlternateImage(const std::string& name) = 0;
  virtual void setAttributedTitle(const StyledText& title) = 0;
  /// Replaces the menu whole. The menu is copied.
  virtual void setMenu(const Menu& menu) = 0;
};

/// The length of an item that takes the room it needs.
inline constexpr double variableStatusItemLength = -1.0;

class StatusBar {
 public:
  virtual ~StatusBar() = default;
  /// A new item, owned by the caller; where the desktop has no status bar it is an item that nobody sees.
  [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItemWithLength(double length) = 0;
};

}  // namespace tallyvane
