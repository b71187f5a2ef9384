// A status item on a private bus, and the panel that shows it.
#pragma once

#include <gtest/gtest.h>

#include "freedesktop/PosixFileStore.h"
#include "freedesktop/StatusNotifierBar.h"
#include "support/FakePanel.h"
#include "support/Fakes.h"

namespace tallyvane::testing {

inline MenuEntry command(const std::string& title) {
  MenuEntry entry;
  entry.kind = MenuEntry::Kind::command;
  entry.title = title;
  entry.action = "showTallyvane";
  return entry;
}

inline MenuEntry billEntry(const std::string& bid, const std::string& text, const std::string& image = "") {
  MenuEntry entry;
  entry.kind = MenuEntry::Kind::bill;
  entry.styledTitle.text = text;
  entry.action = "menuItemSelected:";
  entry.representedObject = bid;
  entry.imageName = image;
  return entry;
}

class StatusNotifierBarTest : public ::testing::Test {
 protected:
  StatusNotifierBarTest() {
    put(session.folder.path + "/mnblack.png", "BLACK");
    put(session.folder.path + "/house.png", "HOUSE");
    resources.pictures = {{"mnblack", session.folder.path + "/mnblack.png"},
                          {"house", session.folder.path + "/house.png"}};
    item->setToolTip("Tallyvane");
    item->setImage("mnblack");
    item->setMenu({{command("Show"), MenuEntry(), billEntry("A", "Car_Loan\nDue today", "house")}});
    announce();
  }

  /// What the program's loop does at the end of a turn.
  void announce() { queue.run(); }
  std::int32_t idOf(std::size_t position) { return panel.items()[position].get<0>(); }
  std::string shownToolTip() {
    using Pixmaps = std::vector<sdbus::Struct<std::int32_t, std::int32_t, std::vector<std::uint8_t>>>;
    return panel.property<sdbus::Struct<std::string, Pixmaps, std::string, std::string>>("ToolTip").get<2>();
  }

  PrivateSession session;
  SessionBus bus{session.address};
  FakeMainQueue queue;
  PosixFileStore files{session.data()};
  FakeResources resources;
  RecordingLog log;
  std::vector<std::string> chosen;
  StatusNotifierBar bar{
      bus, queue, files, resources, session.folder.path + "/run", log, [this](const MenuEntry& entry) {
        chosen.push_back(entry.action + entry.representedObject);
      }};
  std::unique_ptr<StatusItem> item = bar.statusItemWithLength(variableStatusItemLength);
  FakePanel panel{session, {*bus.connection()}};
};

}  // namespace tallyvane::testing
