#include "cli/settings/SettingsCatalogue.h"

#include "cli/Failure.h"
#include "cli/input/Similar.h"
#include "common/Sentences.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

const std::vector<Setting>& settingsCatalogue() {
  using enum SettingKind;
  static const std::vector<Setting> catalogue = {
      {key::DueSoonDays, number, marked("How many days ahead a bill counts as due soon"), 0, 3650},
      {key::AvoidWeekends, number,
       marked("Due dates on a weekend are shown: 0 the Friday before, 1 the Monday after, 2 as they are"), 0, 2},
      {key::HideAutomaticBillsInOverview, yesNo, marked("Leave bills that are paid automatically out of all lists")},
      {key::DontCountAuto, yesNo,
       marked("Leave bills that are paid automatically out of the status menu and the statistics")},
      {key::EnableStartAtLoginMenu, yesNo, marked("Show the status menu")},
      {key::ShouldDisplayStatusTitle, yesNo, marked("Show the number of bills due soon beside the status menu's icon")},
      {key::ReminderEvents, yesNo, marked("Remind by events in a calendar")},
      {key::EnableNotificationCenter, yesNo, marked("Remind by notifications on the desktop")},
      {key::EmailsEnabled, yesNo, marked("Remind by e-mail")},
      {key::LEMAddress, address, marked("Where reminders by e-mail are sent")},
      {key::RemindersTasks, yesNo, marked("Remind by tasks; kept, but tasks are not made")},
      {key::ReminderTime, time, marked("At what time of the day reminders come")},
      {key::CalendarList, list, marked("Names of the calendars to choose from")},
      {key::ReminderCalendarNumber, number, marked("Which calendar of that list gets the events; 0 is the first"), 0,
       999},
      {key::CalendarFolder, path,
       marked("Folder in which the calendars are; empty is the usual place (see \"tallyvane calendar\")")},
      {key::PlayInterfaceSounds, yesNo,
       marked("Play a sound when a payment is logged; at the terminal only with --sound")},
      {key::WhichSoundEffect, number,
       marked("Which sound: 0 trumpet, 1 triumph, 2 harp, 3 applause, 4 a voice at random"), 0, 4},
      {key::iCloudSyncEnabled, yesNo, marked("Mirror bills and tags between your devices")},
      {key::CustomLocationEnabled, yesNo, marked("Keep the data folder in a folder of your own choice")},
      {key::CustomLocationBookmark, folder, marked("That folder")},
      {key::DropboxSyncEnabled, yesNo, marked("That folder is a Dropbox; the data lie in its Apps/Tallyvane")},
      {key::CustomLocationTempPath, path,
       marked("Where the data folder of your own was last found; empty looks again")},
  };
  return catalogue;
}

const Setting& findSetting(const std::string& key) {
  std::vector<std::string> keys;
  for (const Setting& setting : settingsCatalogue()) {
    if (setting.key == key || folded(setting.key) == folded(key)) return setting;
    keys.emplace_back(setting.key);
  }
  const auto similar = nearest(key, keys);
  wrongUsage(
      sentence("There is no setting \"{}\".", key) + " " +
      (similar ? sentence("Did you mean \"{}\"?", *similar) : translated("\"tallyvane settings\" lists them all.")));
}

}  // namespace tallyvane::cli
