#pragma once

#include <functional>
#include <memory>
#include <string>

#include "freedesktop/SessionBus.h"
#include "platform/FileStore.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/Resources.h"
#include "platform/StatusBar.h"

namespace tallyvane {

/// The status bar of a Linux desktop: one item that any panel with a StatusNotifier host shows, its menu over dbusmenu.
/// The item is served from the session bus's connection; whoever owns the connection's loop drives it. A panel that
/// starts later, or again, is given the item again. A program has one item at a time; a second one, and every item
/// where there is no session bus, is one that nobody sees, and the log says why.
class StatusNotifierBar : public StatusBar {
 public:
  /// The user chose an entry of the menu; called inside the processing of the bus's message. A click on the item itself
  /// chooses the menu's first command.
  using Chosen = std::function<void(const MenuEntry&)>;

  /// The count is drawn into pictures in a private folder that an item makes inside `folder` (absolute) and removes
  /// again. All references outlive the bar and its items.
  StatusNotifierBar(SessionBus& bus, MainQueue& mainQueue, FileStore& files, Resources& resources, std::string folder,
                    Log& log, Chosen chosen);

  /// The length is the panel's own business and not looked at.
  [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override;

 private:
  SessionBus& bus_;
  MainQueue& mainQueue_;
  FileStore& files_;
  Resources& resources_;
  std::string folder_;
  Log& log_;
  Chosen chosen_;
};

}  // namespace tallyvane
