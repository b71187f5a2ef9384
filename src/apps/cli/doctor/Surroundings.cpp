#include "cli/doctor/Surroundings.h"

#include <unistd.h>

#include <filesystem>

#include "foundation/Paths.h"
#include "freedesktop/DesktopEntries.h"
#include "freedesktop/Gettext.h"
#include "freedesktop/InstalledResources.h"
#include "freedesktop/LoadedHttpTransport.h"
#include "storage/DataFolder.h"

namespace tallyvane::cli {

namespace {

constexpr std::chrono::milliseconds patience{1'000};

/// A folder that is not there yet is made by its user in the nearest one above it.
bool isWritable(FileStore& files, std::string folder) {
  while (folder.size() > 1 && !files.exists(folder)) folder = parentOf(folder);
  return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

std::optional<std::string> firstThere(FileStore& files, const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (files.exists(path)) return path;
  }
  return std::nullopt;
}

/// The entry of the desktop, unless the user's own file of that name switches it off, or the unit of systemd.
std::optional<std::string> autostartOf(FileStore& files, const SessionEnvironment& session) {
  std::vector<std::string> entries;
  std::vector<std::string> units;
  for (const std::string& folder : session.configFolders) {
    entries.push_back(folder + "/autostart/com.Quillmoor.Tallyvane.Login.desktop");
    units.push_back(folder + "/systemd/user/graphical-session.target.wants/tallyvane-agent.service");
  }
  units.emplace_back("/etc/systemd/user/graphical-session.target.wants/tallyvane-agent.service");
  const auto found = firstThere(files, entries);
  const Result<std::string> text = found ? files.read(*found) : Result<std::string>(Error{});
  const auto entry = text ? parseDesktopEntry(*text) : std::nullopt;
  if (entry && !entry->hidden) return found;
  return firstThere(files, units);
}

std::string zoneSourceOf(const Environment& environment) {
  if (environment("TZ")) return "TZ";
  std::error_code error;
  return std::filesystem::exists("/etc/localtime", error) ? "/etc/localtime" : "/etc/timezone";
}

/// English needs none.
bool hasCatalogueFor(FileStore& files, const std::string& locale) {
  if (locale.starts_with("en")) return true;
  const std::string names = catalogueNames(locale);
  const std::string name = names.substr(0, names.find(':'));
  const std::string folder = catalogueFolder(ownExecutable());
  const auto exists = [&](const std::string& language) {
    return files.exists(folder + "/" + language + "/LC_MESSAGES/tallyvane.mo");
  };
  return exists(name) || exists(name.substr(0, name.find('_')));
}

std::string calendarFolderOf(CalendarStore& calendars) {
  for (const CalendarSource& source : calendars.sources()) {
    if (source.type == 0) return source.identifier;
  }
  return {};
}

}  // namespace

Surroundings lookAround(const Platform& platform, const Environment& environment) {
  FileStore& files = platform.files;
  const SessionEnvironment session = SessionEnvironment::of(environment);
  SessionBus bus(session.busAddress, patience);
  const auto launcher = DesktopEntries(files, session).handlerOfScheme("com-quillmoor-tallyvanelaunch");
  return {.services = SessionServices::ask(bus),
          .launcher = launcher ? std::optional(launcher->path) : std::nullopt,
          .autostart = autostartOf(files, session),
          .zoneSource = zoneSourceOf(environment),
          .hasCatalogue = hasCatalogueFor(files, platform.region.locale),
          .hasHttpModule = files.exists(httpModuleOf(ownExecutable())),
          .isDataFolderWritable = isWritable(files, dataFolder(platform)),
          .isCalendarFolderWritable = isWritable(files, calendarFolderOf(platform.calendars))};
}

}  // namespace tallyvane::cli
