#pragma once

#include <string>

#include "freedesktop/XdgFolders.h"

namespace tallyvane::programs {

/// Where Tallyvane keeps what it keeps. All but the first are files; none need exist.
struct ProgramPaths {
  std::string applicationSupportFolder;  ///< holds the folder "Tallyvane" with the data folder and its backups
  std::string settings;                  ///< the user's own settings
  std::string groupSettings;             ///< shared with the widget; a cache that every listing of bills rewrites
  std::string cloudMirror;
  std::string calendars;      ///< a folder of calendars, unless the user names another
  std::string notifications;  ///< which are scheduled and which were delivered
  std::string lock;           ///< locked by the program that is changing the data
  std::string mailTurn;       ///< locked by the program that is sending what the mail queue holds
  std::string mailRound;      ///< which messages that one has handed over without having an answer yet

  [[nodiscard]] static ProgramPaths in(const XdgFolders& folders);
};

}  // namespace tallyvane::programs
