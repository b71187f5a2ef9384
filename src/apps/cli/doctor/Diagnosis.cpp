#include "cli/doctor/Diagnosis.h"

#include "cli/Failure.h"
#include "cli/bills/BillLookup.h"
#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "reminders/QMEmailManager.h"
#include "reminders/QMReminderManager.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

using Presence = SessionServices::Presence;

std::string type(const std::string& command) { return sentence("Type: {}", command); }

std::string cannotBeWritten(const std::string& folder) { return sentence("{} cannot be written.", folder); }

Diagnosis billsOf(const Platform& platform, const Surroundings& around) {
  const char* subject = marked("Bills");
  try {
    requireReadableData(platform);
  } catch (const Failure& failure) {
    return {subject, Health::broken, failure.what(), ""};
  }
  const std::string folder = dataFolder(platform);
  if (!around.isDataFolderWritable)
    return {subject, Health::broken, cannotBeWritten(folder), translated("Check its owner and its permissions.")};
  const std::size_t bills = programs::billsListedIn(platform, folder).value_or(0);
  return {subject, Health::works, countedSentence(bills, "{} bill in {}", "{} bills in {}", bills, folder), ""};
}

Diagnosis sessionOf(const SessionServices& services) {
  const char* subject = marked("Session bus");
  if (services.busFailure.empty()) return {subject, Health::works, translated("It answers."), ""};
  return {subject, Health::lacking, sentence("It cannot be asked: {}.", services.busFailure),
          translated("Log in to a desktop for the tray menu and notifications; all commands work without.")};
}

Diagnosis agentOf(const SessionServices& services) {
  const char* subject = marked("Tallyvane agent");
  if (services.agent == Presence::running) return {subject, Health::works, translated("It runs."), ""};
  return {subject, Health::lacking, translated("It does not run; reminders, mail and backups wait for it."),
          type("tallyvane-helper")};
}

Diagnosis launchOf(const Surroundings& around) {
  const char* subject = marked("Launching");
  if (around.launcher) return {subject, Health::works, *around.launcher, ""};
  return {subject, Health::lacking, translated("No desktop entry opens Tallyvane when it is to be launched."),
          translated("Install Tallyvane where your desktop looks for applications.")};
}

Diagnosis loginOf(const Surroundings& around) {
  const char* subject = marked("Start at login");
  if (around.autostart) return {subject, Health::works, *around.autostart, ""};
  return {subject, Health::lacking, translated("Nothing starts Tallyvane when you log in."),
          type("systemctl --user enable tallyvane-agent")};
}

Diagnosis trayOf(const Platform& platform, const SessionServices& services) {
  const char* subject = marked("Tray menu");
  const std::string setting(key::EnableStartAtLoginMenu);
  if (!boolSetting(platform.defaults, key::EnableStartAtLoginMenu))
    return {subject, Health::off, translated("Switched off."), type("tallyvane settings set " + setting + " yes")};
  if (services.trayHost) return {subject, Health::works, translated("A panel shows it."), ""};
  return {subject, Health::lacking, translated("No panel shows a tray."),
          translated("Add a status tray to your panel; GNOME has one as the extension AppIndicator.")};
}

Diagnosis notificationsOf(const Platform& platform, const SessionServices& services) {
  const char* subject = marked("Notifications");
  const bool wanted = QMReminderManager{platform}.shouldAddNotifications();
  const std::string server =
      services.notificationServer.empty() ? "org.freedesktop.Notifications" : services.notificationServer;
  if (!wanted)
    return {subject, Health::off, translated("Switched off."),
            type("tallyvane settings set " + std::string(key::EnableNotificationCenter) + " yes")};
  if (services.notifications != Presence::absent)
    return {subject, Health::works, sentence("{} shows them.", server), ""};
  return {subject, Health::broken, translated("Nothing here shows notifications."),
          translated("Install a notification service, such as dunst or xfce4-notifyd.")};
}

Diagnosis calendarsOf(const Platform& platform, const Surroundings& around) {
  const char* subject = marked("Calendar");
  if (!QMReminderManager{platform}.shouldAddEvents())
    return {subject, Health::off, translated("Switched off."),
            type("tallyvane settings set " + std::string(key::ReminderEvents) + " yes")};
  try {
    const std::size_t count = platform.calendars.calendars().size();
    const auto sources = platform.calendars.sources();
    const std::string folder = sources.empty() ? std::string() : sources.front().identifier;
    if (!around.isCalendarFolderWritable)
      return {subject, Health::broken, cannotBeWritten(folder), translated("Check its owner and its permissions.")};
    return {subject, Health::works, countedSentence(count, "{} calendar in {}", "{} calendars in {}", count, folder),
            ""};
  } catch (const CalendarStoreError& error) {
    return {subject, Health::broken, sentence("The calendars cannot be read: {}.", error.what()), ""};
  }
}

Diagnosis mailOf(const Platform& platform, const Surroundings& around) {
  const char* subject = marked("Mail");
  if (!boolSetting(platform.defaults, key::EmailsEnabled))
    return {subject, Health::off, translated("Switched off."),
            type("tallyvane settings set " + std::string(key::EmailsEnabled) + " yes")};
  const QMEmailManager mail{platform};
  if (const auto hindrance = mail.hindrance())
    return {subject, Health::broken, sentence("No mail is sent: {}.", translated(*hindrance)),
            sentence("See: {}", "tallyvane mail --help")};
  if (!around.hasHttpModule)
    return {subject, Health::broken, translated("The module for the network is missing."),
            translated("Install Tallyvane anew.")};
  return {subject, Health::works, mail.serviceAddress(), type("tallyvane mail test")};
}

Diagnosis languageOf(const Platform& platform, const Surroundings& around) {
  const std::string& locale = platform.region.locale;
  if (around.hasCatalogue) return {marked("Language"), Health::works, locale, ""};
  return {marked("Language"), Health::lacking, sentence("{}, with texts in English", locale),
          translated("Tallyvane has no texts in this language yet.")};
}

}  // namespace

std::vector<Diagnosis> diagnose(const Platform& platform, const Surroundings& around) {
  return {billsOf(platform, around),
          sessionOf(around.services),
          agentOf(around.services),
          launchOf(around),
          loginOf(around),
          trayOf(platform, around.services),
          notificationsOf(platform, around.services),
          calendarsOf(platform, around),
          mailOf(platform, around),
          languageOf(platform, around),
          {marked("Time zone"), Health::works, platform.region.timeZone + " (" + around.zoneSource + ")", ""}};
}

}  // namespace tallyvane::cli
