// A computer on which a week passes: the parts of the agent that remind, real files and services, a clock that the test
// sets. The week is long past, so every timer of the agent runs out at once: whatever it does it does over and over.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "agent/MailRounds.h"
#include "agent/Reminders.h"
#include "freedesktop/NoServices.h"
#include "support/AgentMail.h"
#include "support/FakeNotificationService.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

class SimulatedWeek : public ::testing::Test {
 protected:
  SimulatedWeek() {
    std::filesystem::create_directories(session.config() + "/Tallyvane");
    session.putPlist(session.config() + "/Tallyvane/com.Quillmoor.Tallyvane.plist",
                     Dictionary{{"QMEmailsEnabled", true},
                                {"QMEnableNotificationCenter", true},
                                {"QMReminderEvents", true},
                                {"LEMAddress", "ada@example.org"}});
    setUpMailService(session, server, server.https);
  }
  void put(const std::vector<Dictionary>& bills) {
    Array bids;
    for (const Dictionary& one : bills) {
      bids.push_back(*one.find("Bid"));
      session.putPlist(session.dataFolder() + "/" + *one.get<std::string>("Bid") + ".plist", one);
    }
    session.putPlist(session.dataFolder() + "/billindex.plist", Dictionary{{"ActiveBills", bids}});
  }
  /// A moment of March 2024.
  static Date utc(unsigned day, int hour, int minute = 0) {
    return std::chrono::sys_days{std::chrono::year{2024} / 3 / std::chrono::day{day}} + std::chrono::hours{hour} +
           std::chrono::minutes{minute};
  }
  static Dictionary reminding(const std::string& bid, const std::string& name, Date due, int before) {
    Dictionary made = bill(bid, name, 0);
    made.set("DueDate", due);
    made.set("RemindMe", true);
    made.set("ReminderDays", before);
    return made;
  }

  struct Computer;
  void switchOn(const std::string& zone);
  void switchOff();
  /// What arrives at this moment; the computer has all the time that it needs.
  void at(const std::string& label, Date moment);
  /// Names in the order of the mails that the service received.
  [[nodiscard]] std::vector<std::string> mailed() const {
    std::vector<std::string> names;
    const std::string requests = server.requests();
    const std::string before = "&subject=Bill%20Due%20Soon%3A%20";
    for (auto at = requests.find(before); at != std::string::npos; at = requests.find(before, at + 1)) {
      const auto begin = at + before.size();
      names.push_back(requests.substr(begin, requests.find('&', begin) - begin));
    }
    return names;
  }

  TallyvaneSession session;
  WebServer server;
  FakeNotificationService service{session};
  FakeClock clock;
  RecordingLog log;
  std::vector<std::string> arrived;  ///< "WHEN KIND NAME", in the order of the week
  std::shared_ptr<Computer> computer;

 private:
  void seen(const char* kind, const std::string& title, const std::string& label, std::vector<std::string>& told) {
    const auto count = [&](const std::vector<std::string>& list) {
      return std::count(list.begin(), list.end(), title);
    };
    const auto all = kind == std::string("mail") ? mailed() : service.titles();
    if (count(all) == count(told)) return;
    told.push_back(title);
    arrived.push_back(label + " " + kind + " " + title);
  }
  std::vector<std::string> toldNotifications, toldMails;
};

/// From its start to its end.
struct SimulatedWeek::Computer {
  Computer(SimulatedWeek& owner, const std::string& zone) : week(owner) { moveTo(zone); }
  ~Computer() { mail.endRequests(); }

  void moveTo(const std::string& zone) {
    if (desktop) mail.endRequests();
    desktop.reset();
    desktop = std::make_unique<programs::DesktopPlatform>(XdgFolders::of(week.session.environment()),
                                                          Region{"en_US", zone, {}}, week.clock, week.log, workspace,
                                                          statusBar, application);
    mail.follow(*desktop);
  }
  /// Until two rounds of mail have come to their end after the notifications were delivered, and all that was asked of
  /// the notification service has been answered.
  void work() {
    reminders.bringUpToDate();
    const auto enough = rounds() + 2;
    bool answered = false;
    const auto asked = sdbus::createProxy(*bus, FakeNotificationService::name, FakeNotificationService::path);
    asked->callMethodAsync("CloseNotification")
        .onInterface(FakeNotificationService::name)
        .withArguments(std::uint32_t{0})
        .uponReplyInvoke([&](const sdbus::Error* /*error*/) { answered = true; });
    runUntil([&] { return answered && rounds() >= enough; });
  }
  void runUntil(const std::function<bool()>& done) {
    const auto limit = std::chrono::steady_clock::now() + patience;
    agent::EventLoop loop(*bus, [&] {
      const bool isLate = std::chrono::steady_clock::now() > limit;
      EXPECT_FALSE(isLate);
      if (isLate || done()) loop.end();
    });
    reminders.attachTo(loop);
    mail.attachTo(loop);
    loop.add(week.service.descriptor(), [this] { week.service.handleMessages(); });
    loop.run();
  }
  [[nodiscard]] std::ptrdiff_t rounds() const {
    return std::count(week.log.lines.begin(), week.log.lines.end(), "Index of pending messages cleared");
  }

  SimulatedWeek& week;
  NoStatusBar statusBar;
  NoApplication application;
  FakeWorkspace workspace;
  std::unique_ptr<sdbus::IConnection> bus = week.session.connect();
  std::unique_ptr<programs::DesktopPlatform> desktop;
  agent::Reminders reminders{*bus, [this]() -> programs::DesktopPlatform& { return *desktop; }, [](const auto&) {},
                             week.log};
  agent::MailRounds mail{[this]() -> programs::DesktopPlatform& { return *desktop; }, week.log};
};

inline void SimulatedWeek::switchOn(const std::string& zone) { computer = std::make_shared<Computer>(*this, zone); }

inline void SimulatedWeek::switchOff() { computer.reset(); }

inline void SimulatedWeek::at(const std::string& label, Date moment) {
  clock.moment = moment;
  if (computer) computer->work();
  for (const std::string& title : service.titles()) seen("notification", title, label, toldNotifications);
  for (const std::string& title : mailed()) seen("mail", title, label, toldMails);
}

}  // namespace tallyvane::testing
