// Stand-ins for services of the desktop that a program does without.
#pragma once

#include <memory>

#include "platform/Application.h"
#include "platform/StatusBar.h"

namespace tallyvane {

/// Items that nobody sees.
class NoStatusBar : public StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double /*length*/) override {
    return std::make_unique<Item>();
  }

 private:
  class Item : public StatusItem {
    void setHighlightMode(bool /*on*/) override {}
    void setToolTip(const std::string& /*text*/) override {}
    void setEnabled(bool /*on*/) override {}
    void setImage(const std::string& /*name*/) override {}
    void setAlternateImage(const std::string& /*name*/) override {}
    void setAttributedTitle(const StyledText& /*title*/) override {}
    void setMenu(const Menu& /*menu*/) override {}
  };
};

/// A program that ends by itself.
class NoApplication : public Application {
 public:
  void terminate() override {}
};

}  // namespace tallyvane
