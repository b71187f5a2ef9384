// Rounds of the mail queue.
#pragma once

#include "common/MailRound.h"

#include <gmock/gmock.h>

#include "reminders/QMEmailManager.h"
#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::programs {

using namespace tallyvane::testing;
using std::chrono::days;
using std::chrono::hours;

/// Sends what is queued, as a program does over its platform.
inline Result<> sendQueued(FakeDesktop& desktop, const Platform& platform, MailRoundNotes& notes) {
  QMEmailManager{platform}.checkForMessagesToSendAsynchronous(true);
  desktop.workQueue.run();
  desktop.mainQueue.run();
  return notes.note({});
}

/// Noon of 10 March in New York; alarms are at nine.
struct Rounds : ::testing::Test {
  Rounds() {
    desktop.defaults.content.set("LEMAddress", "ada@example.org");
    desktop.defaults.content.set("QMEmailsEnabled", true);
  }
  Dictionary reminding(const std::string& bid, const std::string& name, int due, int before) {
    return with(with(bill(bid, name, daysFromToday(due)), "RemindMe", true), "ReminderDays", before);
  }
  std::vector<std::string> pending() { return QMEmailManager{desktop.platform}.getPendingMessages(); }
  /// What one round of a program sends, as the subjects' last words.
  std::vector<std::string> round() {
    desktop.http.sent.clear();
    notes.prepareMailQueue();
    (void)sendQueued(desktop, desktop.platform, notes);
    std::vector<std::string> names;
    for (const std::string& body : desktop.http.sent) {
      const std::size_t begin = body.find("Soon%3A%20") + 10;
      names.push_back(body.substr(begin, body.find('&', begin) - begin));
    }
    return names;
  }
  void pay(Dictionary paid, int due) {
    paid.set("DueDate", daysFromToday(due));
    desktop.files.putPlist(inDataFolder(*paid.get<std::string>("Bid") + ".plist"), paid);
  }

  FakeDesktop desktop;
  MailRoundNotes notes{desktop.platform, dataFolder + "/mail.plist"};
};

}  // namespace tallyvane::programs
