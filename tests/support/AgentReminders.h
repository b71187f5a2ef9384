// The agent in a session whose user has asked to be reminded.
#pragma once

#include "freedesktop/PlistNotificationCenter.h"
#include "freedesktop/PosixFileStore.h"
#include "support/AgentSession.h"
#include "support/FakeNotificationService.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

class AgentRemindersTest : public AgentTest {
 protected:
  AgentRemindersTest() { settings({{"QMEnableNotificationCenter", true}}); }
  void schedule(const std::string& bid, Date at) {
    ASSERT_TRUE(center.schedule({"", "Pay " + bid, "soon", "View", true, Dictionary{{"Bid", bid}}, "default", at}));
  }
  static Date now() { return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()); }

  PosixFileStore files{session.data()};
  FakeRandom random;
  RecordingLog log;
  PlistNotificationCenter center{session.folder.path + "/state/Tallyvane/notifications.plist", files, random, log};
};

}  // namespace tallyvane::testing
