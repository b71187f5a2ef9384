// A desktop whose mail service is set up.
#pragma once

#include "reminders/QMEmailManager.h"

#include <gmock/gmock.h>

#include "reminders/QMStore.h"
#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

using std::chrono::minutes;
using std::chrono::seconds;

struct Mail : ::testing::Test {
  Mail() {
    (void)desktop.files.createFolder(dataFolder);
    desktop.defaults.content.set("LEMAddress", "ada@example.org");
    desktop.resources.texts["template.html"] = "<p>$BillName, $NextDueDate; $BillName</p>";
    desktop.resources.texts["sample.html"] = "<p>sample</p>";
  }
  void queue(const std::string& title, std::chrono::seconds alarmIn) {
    QMEmailManager{desktop.platform}.createMessageWithTitleAndAlarmDateAndDueDate(title, desktop.clock.moment + alarmIn,
                                                                                  noon(2027, 3, 14));
  }
  void check(bool asynchronous) { QMEmailManager{desktop.platform}.checkForMessagesToSendAsynchronous(asynchronous); }
  void finish() {
    desktop.workQueue.run();
    desktop.mainQueue.run();
  }
  std::vector<std::string> pending() { return stringsOf(file().get<Array>("PendingMessages")); }
  Dictionary file() { return fileOf(desktop, "mailindex.plist"); }
  Dictionary message(const std::string& title) { return file().valueOr(title, Dictionary()); }
  void fail() { desktop.http.outcome = HttpFailure{HttpFailure::Kind::timedOut, "silence"}; }
  std::vector<std::string> logged() { return std::exchange(desktop.log.lines, {}); }

  FakeDesktop desktop;
};

}  // namespace tallyvane::testing
