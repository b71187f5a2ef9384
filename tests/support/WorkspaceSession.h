// A session in which addresses are opened.
#pragma once

#include "freedesktop/SessionWorkspace.h"

#include <gmock/gmock.h>

#include "freedesktop/PosixFileStore.h"
#include "support/Fakes.h"
#include "support/Matchers.h"
#include "support/NamedPipe.h"
#include "support/PrivateSession.h"

namespace tallyvane::testing {

/// An application that runs, and notes the addresses that it is asked to open.
struct BillView {
  explicit BillView(const PrivateSession& session) : connection(session.connect()) {
    object = sdbus::createObject(*connection, "/com/example/Bill_View");
    object->registerMethod("Open")
        .onInterface("org.freedesktop.Application")
        .implementedAs([this](const std::vector<std::string>& urls, const std::map<std::string, sdbus::Variant>&) {
          opened = urls;
        });
    object->finishRegistration();
    connection->requestName("com.example.Bill-View");
  }
  std::vector<std::string> opened;
  std::unique_ptr<sdbus::IConnection> connection;
  std::unique_ptr<sdbus::IObject> object;
};

class SessionWorkspaceTest : public ::testing::Test {
 protected:
  void install(const std::string& id, const std::string& scheme, const std::string& rest) {
    const std::string folder = session.data() + "/applications";
    std::filesystem::create_directories(folder);
    put(folder + "/" + id, "[Desktop Entry]\nType=Application\nMimeType=x-scheme-handler/" + scheme + ";\n" + rest);
  }

  PrivateSession session;
  PosixFileStore files{session.data()};
  RecordingLog log;
  SessionBus bus{session.address, std::chrono::seconds{2}};
  SessionWorkspace workspace{bus, files, SessionEnvironment::of(session.environment()), log};
};

}  // namespace tallyvane::testing
