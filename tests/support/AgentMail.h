// An agent with a mail service.
#pragma once

#include <gmock/gmock.h>

#include "support/AgentSession.h"
#include "support/Matchers.h"
#include "support/SilentPort.h"
#include "support/WebServer.h"

namespace tallyvane::testing {

/// Has the programs of the session send mail through the service on that port.
inline void setUpMailService(const PrivateSession& session, const WebServer& server, int port) {
  std::filesystem::create_directories(session.folder.path + "/system/Tallyvane");
  put(session.folder.path + "/system/Tallyvane/mail.conf",
      "[Mail Service]\nHost=127.0.0.1\nPort=" + std::to_string(port) +
          "\nApiKey=3f1c0b7e-5d2a-4c9b-8e61-0a4d7c2b9f13\nCertificates=" + server.certificate() + "\n");
}

struct AgentMail : AgentTest {
  AgentMail() {
    remind("A", "Rent", 3, 1);
    settings({{"QMEmailsEnabled", true}, {"LEMAddress", "ada@example.org"}});
    setUpService(server.https);
  }
  void setUpService(int port) { setUpMailService(session, server, port); }
  Dictionary queue() { return session.plist(session.dataFolder() + "/mailindex.plist"); }
  std::vector<std::string> pending() { return stringsOf(queue().get<Array>("PendingMessages")); }
  bool endsWell() {
    agent->signal(SIGTERM);
    return agent->ended() == 0;
  }

  WebServer server;
};

}  // namespace tallyvane::testing
