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
