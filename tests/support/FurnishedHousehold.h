// A household that uses everything, and what programs do in it.
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "cli/bills/BillChange.h"
#include "support/MailRounds.h"
#include "support/Safekeeping.h"
#include "support/ShellWords.h"
#include "support/Strikes.h"

namespace tallyvane::testing {

inline Operation command(const std::string& line) {
  return [arguments = wordsOf(line)](CliDesktop& cli, FileStore& store) { return cli.runOn(store, arguments); };
}

/// What the agent does by itself, over the files as it guards them. The operation gives an error or nothing.
template <typename Work>
Operation agent(Work work) {
  return [=](CliDesktop& cli, FileStore& store) {
    programs::GuardedFileStore guarded(store, cli.desktop.log);
    const Platform platform = cli.desktop.over(guarded);
    const Result<> done = work(cli, guarded, platform);
    return Outcome{done ? 0 : 1, "", done ? "" : done.error()};
  };
}

inline Result<> sendMails(CliDesktop& cli, programs::GuardedFileStore& guarded, const Platform& platform) {
  programs::MailRoundNotes notes{platform, "/home/ada/.local/state/Tallyvane/mail.plist"};
  guarded.begin();
  notes.prepareMailQueue();
  if (const Result<> prepared = guarded.finish(); !prepared) return prepared;
  return programs::sendQueued(cli.desktop, platform, notes);
}

inline Outcome listRentTwice(CliDesktop& cli, FileStore&) {
  const std::string path = cli.dataFolder + "/billindex.plist";
  Dictionary index = *cli.desktop.files.plist(path).get<Dictionary>();
  Array active = *index.get<Array>("ActiveBills");
  active.push_back(active.front());
  index.set("ActiveBills", active);
  cli.desktop.files.putPlist(path, index);
  cli::mirrorLists(cli.desktop.platform);
  return {};
}

/// Bills in each state, one paid automatically and overdue, reminders of every kind, a mirror, income, a backup of
/// yesterday and an old folder to import.
inline void furnish(CliDesktop& cli) {
  FakeDesktop& desktop = cli.desktop;
  desktop.calendars.calendarList = {{"home", "Tallyvane", "here"}};
  for (const char* key : {"QMReminderEvents", "QMEnableNotificationCenter", "iCloudSyncEnabled", "QMEmailsEnabled"})
    (void)desktop.defaults.set(key, true);
  (void)desktop.defaults.set("LEMAddress", "ada@example.org");
  desktop.clock.moment -= std::chrono::hours{24};
  Safekeeping::setUp(cli);
  for (const char* line :
       {"add Phone --due 2027-03-20 --repeat monthly --amount 20 --tag Home",
        "add Gone --due 2027-03-20 --repeat monthly --amount 20",
        "add Power --due 2027-01-10 --repeat monthly --amount 1 --auto", "edit Rent --due 2027-03-13 --tag Home",
        "archive Phone", "delete Gone", "income add Salary --amount 2800 --repeat monthly --day last", "backup",
        "edit Rent --amount 901"}) {
    const Outcome outcome = cli.run(wordsOf(line));
    ASSERT_EQ(outcome.status, 0) << line << outcome.err;
  }
  desktop.clock.moment += std::chrono::hours{24};
  (void)cli.run({"overview"});  // for the widget
  cli::mirrorLists(desktop.platform);
  for (const char* name : {"Gym", "Club"})
    desktop.files.putPlist("/media/Tallyvane/Data/" + std::string(name) + ".plist",
                           Dictionary{{"Next_Due", Date()}, {"Repeat_a", 2}, {"Repeat_b", "Weeks"}});
}

inline std::set<std::string> listedIn(InMemoryFileStore& files, const std::string& folder) {
  const Value root = files.plist(folder + "/billindex.plist");
  std::set<std::string> bids;
  for (const char* list : {"ActiveBills", "ArchivedBills", "DeletedBills"}) {
    if (!root.is<Dictionary>()) break;
    for (const std::string& bid : stringsOf(root.get<Dictionary>()->get<Array>(list))) bids.insert(bid);
  }
  return bids;
}

/// Whether a folder lists all these bills and has their files.
inline bool isWhole(InMemoryFileStore& files, const std::string& folder, const std::set<std::string>& bids) {
  const std::set<std::string> listed = listedIn(files, folder);
  return std::all_of(bids.begin(), bids.end(), [&](const std::string& bid) {
    return listed.contains(bid) && files.content.contains(folder + "/" + bid + ".plist");
  });
}

/// Folders with a list of bills, wherever they are by now. Backups do not count.
inline std::set<std::string> dataFolders(const std::map<std::string, std::string>& content) {
  std::set<std::string> folders;
  for (const auto& [path, bytes] : content) {
    if (path.ends_with("/billindex.plist") && path.find("Tallyvane.tvdata") != std::string::npos)
      folders.insert(InMemoryFileStore::parent(path));
  }
  return folders;
}

/// Titles of what reminds of bills, and what the widget shows.
inline std::vector<std::string> remindersOf(FakeDesktop& desktop) {
  std::vector<std::string> titles;
  for (const CalendarEvent& event : desktop.calendars.eventList) titles.push_back("event " + event.title);
  for (const auto& note : desktop.notifications.scheduledList) titles.push_back("notification " + note.title);
  std::sort(titles.begin(), titles.end());
  titles.push_back(writePropertyList(desktop.groupDefaults.object("ActiveBills").value_or(Value(""))));
  return titles;
}

}  // namespace tallyvane::testing
