#pragma once

#include <string>

#include "platform/Platform.h"

namespace tallyvane {

/// Moves, copies or finds a data folder when the user changes where the data lie; the settings that say where are the
/// caller's to change. Locations are absolute paths. One that does not end in "Tallyvane.tvdata" means the folder of
/// that name in it. Errors go to the log. Nobody may write bills meanwhile.
class QMDatabaseMover {
 public:
  explicit QMDatabaseMover(const Platform& platform) : platform_(platform) {}

  /// Both take the data folder at `original` as it is named. With `overwrite` whatever stands at the new place is
  /// removed first. Nothing is removed or done when the two places are the same or lie in one another, however their
  /// paths are written.
  bool moveDatabaseToNewLocationFromOriginalLocationOverwrite(const std::string& newLocation,
                                                              const std::string& original, bool overwrite);
  /// With `overwrite`, a failed removal, also of nothing, makes the answer no although the copy was made; deliberate.
  bool copyDatabaseToNewLocationFromOriginalLocationOverwrite(const std::string& newLocation,
                                                              const std::string& original, bool overwrite);
  /// Whether anything is there.
  [[nodiscard]] bool loadDatabaseFromAnotherLocation(const std::string& location);
  /// Moves the data folder at `path` to the default place, replacing what is there.
  bool resetDatabaseFromStartLocation(const std::string& path);
  /// Whether a folder "Tallyvane.tvdata" in the location has a bill index; the location itself is never taken for the
  /// data folder; deliberate.
  [[nodiscard]] bool databaseExistsWithDataAtLocation(const std::string& location);

 private:
  [[nodiscard]] std::string newPlace(const std::string& location);

  const Platform& platform_;
};

}  // namespace tallyvane
