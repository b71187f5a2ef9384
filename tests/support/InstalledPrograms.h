// The programs as built, in a private session that knows them: the build folder is laid out like an installation.
#pragma once

#include <cstdlib>
#include <string>

#include "foundation/PropertyList.h"
#include "support/PrivateSession.h"

namespace tallyvane::testing {

inline const std::string programs = TALLYVANE_BUILD_FOLDER "/bin/";

struct TallyvaneSession : PrivateSession {
  TallyvaneSession() : PrivateSession(TALLYVANE_BUILD_FOLDER "/share/dbus-1/services") {
    dataDirs = TALLYVANE_BUILD_FOLDER "/share";
    std::filesystem::create_directories(dataFolder());
    // In place of a terminal's window: the last two words of the command that would run in it.
    put(folder.path + "/terminal", "#!/bin/sh\nshift 5\necho \"$@\" >'" + folder.path + "/window'\n");
    std::filesystem::permissions(folder.path + "/terminal", std::filesystem::perms::owner_all);
  }

  [[nodiscard]] std::string dataFolder() const { return data() + "/Tallyvane/Tallyvane.tvdata"; }

  /// Puts a property list in place in one step, as every writer of the data folder does.
  void putPlist(const std::string& path, const Value& root) const {
    put(path + ".new", writePropertyList(root));
    std::filesystem::rename(path + ".new", path);
  }
  [[nodiscard]] Dictionary plist(const std::string& path) const {
    const auto root = readPropertyList(contentOf(path));
    return root && root->is<Dictionary>() ? *root->get<Dictionary>() : Dictionary();
  }
  [[nodiscard]] std::string groupSettings() const { return config() + "/Tallyvane/group.Quillmoor.Tallyvane.plist"; }

  /// Whether anybody owns the application's name now.
  [[nodiscard]] bool isRunning() const {
    const auto connection = connect();
    bool owned = false;
    sdbus::createProxy(*connection, "org.freedesktop.DBus", "/org/freedesktop/DBus")
        ->callMethod("NameHasOwner")
        .onInterface("org.freedesktop.DBus")
        .withArguments(std::string("com.Quillmoor.Tallyvane"))
        .storeResultsTo(owned);
    return owned;
  }
};

}  // namespace tallyvane::testing
