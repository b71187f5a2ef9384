#pragma once

#include <optional>
#include <string>

#include "freedesktop/SessionServices.h"
#include "freedesktop/XdgFolders.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// What is around the programs and is no service of the model.
struct Surroundings {
  SessionServices services;
  std::optional<std::string> launcher;   ///< path of the desktop entry that opens Tallyvane's launch URL
  std::optional<std::string> autostart;  ///< path of what starts Tallyvane at login
  std::string zoneSource;                ///< where the time zone was told: "TZ" or a file
  bool hasCatalogue = true;              ///< the texts are there in the user's language, or it is English
  bool hasHttpModule = true;
  bool isDataFolderWritable = true;
  bool isCalendarFolderWritable = true;
};

/// Looks around. Reads only; what does not answer is waited for a second at most.
[[nodiscard]] Surroundings lookAround(const Platform& platform, const Environment& environment);

}  // namespace tallyvane::cli
