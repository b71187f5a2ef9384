// A notification service: shows nothing, notes what it is asked, and presses buttons.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/PrivateSession.h"

namespace tallyvane::testing {

class FakeNotificationService {
 public:
  struct Shown {
    std::uint32_t number = 0;
    std::string title;
    std::string text;
    std::vector<std::string> actions;
    std::map<std::string, sdbus::Variant> hints;
    std::int32_t expires = -1;
  };

  explicit FakeNotificationService(const PrivateSession& session) : connection_(session.connect()) {
    object_ = sdbus::createObject(*connection_, path);
    object_->registerMethod("Notify").onInterface(name).implementedAs(
        [this](const std::string& /*program*/, std::uint32_t /*replaces*/, const std::string& /*icon*/,
               const std::string& title, const std::string& text, const std::vector<std::string>& actions,
               const std::map<std::string, sdbus::Variant>& hints, std::int32_t expires) {
          if (asked) asked();
          if (refusing) {
            ++refused;
            throw sdbus::Error("org.example.Refused", "nothing can be shown");
          }
          shown.push_back({++number_, title, text, actions, hints, expires});
          return number_;
        });
    object_->registerMethod("CloseNotification").onInterface(name).implementedAs([this](std::uint32_t number) {
      closed.push_back(number);
    });
    object_->registerSignal("ActionInvoked").onInterface(name).withParameters<std::uint32_t, std::string>();
    object_->finishRegistration();
    connection_->requestName(name);
  }

  bool until(const std::function<bool()>& condition) { return waitUntil({connection_.get()}, condition); }
  /// For a loop that waits for other things too.
  [[nodiscard]] int descriptor() { return connection_->getEventLoopPollData().fd; }
  void handleMessages() {
    while (connection_->processPendingRequest()) {
    }
  }
  bool hasShown(std::size_t count) {
    return until([&] { return shown.size() >= count; });
  }
  void press(std::uint32_t number, const std::string& action) {
    object_->emitSignal("ActionInvoked").onInterface(name).withArguments(number, action);
  }
  [[nodiscard]] std::vector<std::string> titles() const {
    std::vector<std::string> all;
    for (const Shown& one : shown) all.push_back(one.title);
    return all;
  }

  static constexpr const char* name = "org.freedesktop.Notifications";
  static constexpr const char* path = "/org/freedesktop/Notifications";

  std::vector<Shown> shown;
  std::vector<std::uint32_t> closed;
  std::function<void()> asked;  ///< called before a notification is shown
  bool refusing = false;
  int refused = 0;

 private:
  std::unique_ptr<sdbus::IConnection> connection_;
  std::unique_ptr<sdbus::IObject> object_;
  std::uint32_t number_ = 40;
};

}  // namespace tallyvane::testing
