// A user's session of the test's own: folders, a session bus, and a way to wait for what happens on it.
#pragma once

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/PropertyList.h"
#include "freedesktop/XdgFolders.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

class PrivateSession {
 public:
  /// The bus starts what the service files in `services` say, and nothing else.
  explicit PrivateSession(const std::string& services = "") {
    for (const char* name : {"run", "data", "config", "state", "system"})
      std::filesystem::create_directory(folder.path + "/" + name);
    std::filesystem::permissions(folder.path + "/run", std::filesystem::perms::owner_all);
    address = "unix:path=" + folder.path + "/bus";
    put(folder.path + "/bus.conf",
        "<busconfig><type>session</type><listen>" + address + "</listen><auth>EXTERNAL</auth>" +
            (services.empty() ? "" : "<servicedir>" + services + "</servicedir>") +
            "<policy context=\"default\"><allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
            "<allow own=\"*\"/></policy></busconfig>");
    startBus();
  }

  [[nodiscard]] std::string data() const { return folder.path + "/data"; }
  [[nodiscard]] std::string config() const { return folder.path + "/config"; }

  /// The whole environment of a program in this session.
  [[nodiscard]] std::vector<std::string> variables() const {
    return {"PATH=/usr/bin:/bin",
            "HOME=" + folder.path,
            "LANG=en_US.UTF-8",
            "TZ=" + timeZone,
            "XDG_RUNTIME_DIR=" + folder.path + "/run",
            "XDG_DATA_HOME=" + data(),
            "XDG_CONFIG_HOME=" + config(),
            "XDG_STATE_HOME=" + folder.path + "/state",
            "XDG_DATA_DIRS=" + dataDirs,
            "XDG_CONFIG_DIRS=" + folder.path + "/system",
            "DBUS_SESSION_BUS_ADDRESS=" + address,
            "TERMINAL=" + folder.path + "/terminal",
            "LSAN_OPTIONS=" + processEnvironment()("LSAN_OPTIONS").value_or("")};
  }
  [[nodiscard]] Environment environment() const {
    return [all = variables()](std::string_view name) -> std::optional<std::string> {
      const std::string start = std::string(name) + "=";
      for (const std::string& variable : all) {
        if (variable.starts_with(start)) return variable.substr(start.size());
      }
      return std::nullopt;
    };
  }

  std::unique_ptr<ChildProcess> start(std::vector<std::string> command) {
    return std::make_unique<ChildProcess>(std::move(command), variables(),
                                          folder.path + "/output-" + std::to_string(++started_));
  }
  [[nodiscard]] std::unique_ptr<sdbus::IConnection> connect() const {
    return sdbus::createSessionBusConnectionWithAddress(address);
  }

  /// Takes the bus away.
  void endBus() { bus_.reset(); }

  TemporaryFolder folder;
  std::string address;
  std::string dataDirs = folder.path + "/system";
  std::string timeZone = "Etc/GMT+5";  ///< never changes its clocks

 private:
  /// The bus says on a pipe that it listens.
  void startBus() {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    const std::vector<std::string> command{"/usr/bin/dbus-daemon", "--config-file=" + folder.path + "/bus.conf",
                                           "--nofork", "--print-address=" + std::to_string(ends[1])};
    bus_ = std::make_unique<ChildProcess>(command, variables(), folder.path + "/bus.log");
    ::close(ends[1]);
    pollfd polled{ends[0], POLLIN, 0};
    const bool listens =
        ::poll(&polled, 1, std::chrono::milliseconds(patience).count()) == 1 && (polled.revents & POLLIN) != 0;
    ::close(ends[0]);
    if (!listens) throw std::runtime_error("the bus does not start: " + bus_->said());
  }

  int started_ = 0;
  std::unique_ptr<ChildProcess> bus_;
};

/// Handles messages of the connections, and of no others, until the condition holds; false when it does not in time.
inline bool waitUntil(const std::vector<sdbus::IConnection*>& connections, const std::function<bool()>& condition,
                      std::chrono::milliseconds limit = patience) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (true) {
    std::vector<pollfd> polled;
    int timeout = 1000;
    for (sdbus::IConnection* connection : connections) {
      while (connection->processPendingRequest()) {
      }
      const auto data = connection->getEventLoopPollData();
      polled.push_back({data.fd, data.events, 0});
      if (data.getPollTimeout() >= 0) timeout = std::min(timeout, data.getPollTimeout());
    }
    if (condition()) return true;
    if (std::chrono::steady_clock::now() > end) return false;
    ::poll(polled.data(), polled.size(), timeout);
  }
}

}  // namespace tallyvane::testing
