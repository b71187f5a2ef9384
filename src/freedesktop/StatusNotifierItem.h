// One item of the status bar as panels read it over the bus: org.kde.StatusNotifierItem.
#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <memory>
#include <string>

#include "freedesktop/CountPictures.h"
#include "freedesktop/DbusMenu.h"
#include "platform/FileStore.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/Resources.h"
#include "platform/StatusBar.h"

namespace tallyvane {

/// Has a bus name of its own, which its destructor gives up: that is how panels see that the item is gone. What several
/// calls change is told to the panels in one go, from the main queue.
class StatusNotifierItem : public StatusItem {
 public:
  struct Services {
    sdbus::IConnection& connection;
    MainQueue& mainQueue;
    FileStore& files;
    Resources& resources;
    Log& log;
  };

  /// `folder` and `chosen` as StatusNotifierBar has them. Throws sdbus::Error when the bus refuses the item.
  StatusNotifierItem(const Services& services, std::string folder, DbusMenu::Chosen chosen);
  ~StatusNotifierItem() override;
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  /// Panels always show a click; there is nothing to set.
  void setHighlightMode(bool /*on*/) override {}
  void setToolTip(const std::string& text) override;
  /// An item that is not enabled is hidden.
  void setEnabled(bool on) override;
  void setImage(const std::string& name) override;
  /// Shown only by panels that ask for the picture of an item that wants attention.
  void setAlternateImage(const std::string& name) override;
  void setAttributedTitle(const StyledText& title) override;
  void setMenu(const Menu& menu) override;

 private:
  struct Icon {
    std::string name;
    std::string folder;
    friend bool operator==(const Icon&, const Icon&) = default;
  };
  /// What panels are shown.
  struct Shown {
    bool enabled = true;
    std::string toolTip;
    std::string count;
    Icon icon;
    std::string attentionIcon;
    friend bool operator==(const Shown&, const Shown&) = default;
  };

  void exportMethods();
  void exportProperties();
  void exportSignals();
  void watchPanels();
  void registerWithPanels();
  void changed();
  void announce();
  void emit(const std::string& signal);
  [[nodiscard]] Icon iconFor(const std::string& count);
  [[nodiscard]] DbusMenu::Bytes pictureBytes(const std::string& imageName);
  void activate();

  Services services_;
  DbusMenu::Chosen chosen_;
  const std::string busName_;
  CountPictures countPictures_;
  std::string image_;
  Shown shown_;
  Shown announced_;
  std::shared_ptr<bool> life_ = std::make_shared<bool>(true);  ///< what the queue looks at before it calls back

  std::unique_ptr<sdbus::IObject> object_;
  std::unique_ptr<DbusMenu> menu_;
  std::unique_ptr<sdbus::IProxy> watcher_;
  sdbus::Slot watcherOwner_;
};

}  // namespace tallyvane
