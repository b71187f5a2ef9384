#include "common/ProgramPaths.h"

namespace tallyvane::programs {

ProgramPaths ProgramPaths::in(const XdgFolders& folders) {
  const std::string config = folders.configHome + "/Tallyvane/";
  const std::string state = folders.stateHome + "/Tallyvane/";
  return {.applicationSupportFolder = folders.dataHome,
          .settings = config + "com.Quillmoor.Tallyvane.plist",
          .groupSettings = config + "group.Quillmoor.Tallyvane.plist",
          .cloudMirror = state + "cloud.plist",
          .calendars = folders.dataHome + "/calendars",
          .notifications = state + "notifications.plist",
          .lock = state + "lock",
          .mailTurn = state + "mail.lock",
          .mailRound = state + "mail.plist"};
}

}  // namespace tallyvane::programs
