#include "freedesktop/SessionServices.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <vector>

namespace tallyvane {

namespace {

using Names = std::vector<std::string>;

bool contains(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

Names listed(sdbus::IProxy& daemon, const std::string& method) {
  Names names;
  daemon.callMethod(method).onInterface("org.freedesktop.DBus").storeResultsTo(names);
  return names;
}

/// A service that is there but does not answer is there without a name.
std::string nameOfServer(sdbus::IConnection& connection) {
  const std::string name = "org.freedesktop.Notifications";
  try {
    std::string title, vendor, version, protocol;
    sdbus::createProxy(connection, name, "/org/freedesktop/Notifications")
        ->callMethod("GetServerInformation")
        .onInterface(name)
        .storeResultsTo(title, vendor, version, protocol);
    return title + " " + version;
  } catch (const sdbus::Error&) {
    return {};
  }
}

bool hasHost(sdbus::IConnection& connection) {
  const std::string name = "org.kde.StatusNotifierWatcher";
  try {
    return sdbus::createProxy(connection, name, "/StatusNotifierWatcher")
        ->getProperty("IsStatusNotifierHostRegistered")
        .onInterface(name)
        .get<bool>();
  } catch (const sdbus::Error&) {
    return false;
  }
}

}  // namespace

SessionServices SessionServices::ask(SessionBus& bus) {
  SessionServices found;
  const auto connection = bus.connection();
  if (!connection) {
    found.busFailure = connection.error();
    return found;
  }
  try {
    const auto daemon = sdbus::createProxy(**connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
    const Names running = listed(*daemon, "ListNames");
    const Names startable = listed(*daemon, "ListActivatableNames");
    const auto presence = [&](std::string_view name) {
      if (contains(running, name)) return Presence::running;
      return contains(startable, name) ? Presence::startable : Presence::absent;
    };
    found.agent = presence("com.Quillmoor.Tallyvane");
    found.notifications = presence("org.freedesktop.Notifications");
    found.trayWatcher = contains(running, "org.kde.StatusNotifierWatcher");
  } catch (const sdbus::Error& error) {
    found.busFailure = "the session bus does not answer: " + error.getMessage();
    return found;
  }
  if (found.notifications == Presence::running) found.notificationServer = nameOfServer(**connection);
  found.trayHost = found.trayWatcher && hasHost(**connection);
  return found;
}

}  // namespace tallyvane
