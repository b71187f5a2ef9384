#include "freedesktop/StatusNotifierBar.h"

#include <utility>

#include "freedesktop/NoServices.h"
#include "freedesktop/StatusNotifierItem.h"

namespace tallyvane {

StatusNotifierBar::StatusNotifierBar(SessionBus& bus, MainQueue& mainQueue, FileStore& files, Resources& resources,
                                     std::string folder, Log& log, Chosen chosen)
    : bus_(bus),
      mainQueue_(mainQueue),
      files_(files),
      resources_(resources),
      folder_(std::move(folder)),
      log_(log),
      chosen_(std::move(chosen)) {}

std::unique_ptr<StatusItem> StatusNotifierBar::statusItemWithLength(double length) {
  const auto connection = bus_.connection();
  if (!connection) {
    log_.diagnostic("The status item cannot be shown: " + connection.error());
    return NoStatusBar().statusItemWithLength(length);
  }
  try {
    return std::make_unique<StatusNotifierItem>(
        StatusNotifierItem::Services{**connection, mainQueue_, files_, resources_, log_}, folder_, chosen_);
  } catch (const sdbus::Error& error) {
    log_.diagnostic("The status item cannot be shown: " + error.getMessage());
    return NoStatusBar().statusItemWithLength(length);
  }
}

}  // namespace tallyvane
