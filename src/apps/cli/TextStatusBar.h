// A status bar that a command reads back.
#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"
#include "platform/StatusBar.h"

namespace tallyvane::cli {

struct ShownStatusItem {
  bool exists = false;
  std::string title;
  Menu menu;
};

/// Holds what its one item was last given. Outlives the item.
class TextStatusBar : public StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override;
  [[nodiscard]] const ShownStatusItem& shown() const { return shown_; }

 private:
  ShownStatusItem shown_;
};

/// The same platform with another status bar.
[[nodiscard]] Platform withStatusBar(const Platform& platform, StatusBar& statusBar);

}  // namespace tallyvane::cli
