// What a session offers, in memory and on a private bus, for the contracts of its ports.
#pragma once

#include "freedesktop/SessionWorkspace.h"
#include "support/ShownStatusItem.h"

namespace tallyvane::testing {

struct WorkspaceInMemory {
  void letRun(const std::string& application) { workspace.running.push_back(application); }
  void letEnd() { workspace.running.clear(); }
  void claimNothing() { workspace.failing = true; }
  FakeWorkspace workspace;
};

struct WorkspaceOnABus {
  void letRun(const std::string& application) {
    name = application;
    running.push_back(session.connect());
    running.back()->requestName(name);
  }
  void letEnd() {
    running.back()->releaseName(name);
    running.pop_back();
  }
  void claimNothing() {}  // nothing is installed
  PrivateSession session;
  PosixFileStore files{session.data()};
  RecordingLog log;
  SessionBus bus{session.address, std::chrono::seconds{10}};
  SessionWorkspace workspace{bus, files, SessionEnvironment::of(session.environment()), log};
  std::string name;
  std::vector<std::unique_ptr<sdbus::IConnection>> running;
};

struct StatusBarInMemory {
  std::vector<std::string> labels() const {
    std::vector<std::string> texts;
    for (const MenuEntry& entry : bar.shown.menu.entries) {
      const bool isSeparator = entry.kind == MenuEntry::Kind::separator;
      const std::string& title = entry.styledTitle.text.empty() ? entry.title : entry.styledTitle.text;
      texts.push_back(isSeparator ? "-" : title);
    }
    return texts;
  }
  FakeStatusBar bar;
  std::unique_ptr<StatusItem> item = bar.statusItemWithLength(variableStatusItemLength);
};

struct StatusBarOnABus {
  std::vector<std::string> labels() {
    queue.run();
    return panel.hasItem() ? panel.labels() : std::vector<std::string>{"no item"};
  }
  PrivateSession session;
  SessionBus bus{session.address};
  FakeMainQueue queue;
  PosixFileStore files{session.data()};
  FakeResources resources;
  RecordingLog log;
  StatusNotifierBar bar{bus, queue, files, resources, session.folder.path + "/run", log, [](const MenuEntry&) {}};
  std::unique_ptr<StatusItem> item = bar.statusItemWithLength(variableStatusItemLength);
  FakePanel panel{session, {*bus.connection()}};
};

}  // namespace tallyvane::testing
