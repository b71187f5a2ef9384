#include "common/DesktopPlatform.h"

#include <utility>

#include "common/MailDefaults.h"
#include "foundation/Calendar.h"
#include "freedesktop/PosixPaths.h"
#include "storage/Keys.h"
#include "storage/Settings.h"

namespace tallyvane::programs {

DesktopPlatform::DesktopPlatform(const XdgFolders& folders, Region region, Clock& clock, Log& log, Workspace& workspace,
                                 StatusBar& statusBar, Application& application)
    : paths_(ProgramPaths::in(folders)),
      region_(std::move(region)),
      files_(paths_.applicationSupportFolder),
      guardedFiles_(files_, log),
      resources_(resourceFolders(ownExecutable(), folders), files_),
      defaults_(paths_.settings, files_, log, Durability::synced),
      groupDefaults_(paths_.groupSettings, files_, log, Durability::cached),
      cloud_(paths_.cloudMirror, files_, log),
      calendars_([this] { return calendarFolder(); }, files_, clock, region_, log),
      notifications_(paths_.notifications, files_, random_, log),
      mail_(builtMailService(), folders, files_, log),
      http_(httpModuleOf(ownExecutable()), mail_),
      mimeTypes_(folders, files_),
      platform_{clock,           region_,    random_,    guardedFiles_,   resources_, bookmarks_,  defaults_,
                &groupDefaults_, cloud_,     calendars_, &notifications_, workspace,  application, statusBar,
                http_,           workQueue_, mainQueue_, mimeTypes_,      mail_,      log} {
  defaults_.registerDefaults(firstValues(region_));
}

void DesktopPlatform::endRequests() {
  workQueue_.end();
  mainQueue_.runPending();
}

std::string DesktopPlatform::calendarFolder() {
  const auto path = settingOf<std::string>(defaults_, key::CalendarFolder);
  return !path || path->empty() ? paths_.calendars : withoutTrailingSlashes(*path);
}

Dictionary firstValues(const Region& region) {
  // Only the hour and the minute of the reminder time count, so any day will do.
  const CivilDay anyDay{std::chrono::year{2001} / 1 / 1};
  const auto entry = [](std::string_view name, Value value) { return Dictionary::Entry(name, std::move(value)); };
  return {entry(key::EnableStartAtLoginMenu, true),
          entry(key::ShouldDisplayStatusTitle, true),
          entry(key::DueSoonDays, 7),
          entry(key::AvoidWeekends, 2),
          entry(key::CalendarList, Array{"Tallyvane"}),
          entry(key::ReminderCalendarNumber, 0),
          entry(key::ReminderTime, Calendar::of(region).wallTime(anyDay, 9, 0))};
}

}  // namespace tallyvane::programs
