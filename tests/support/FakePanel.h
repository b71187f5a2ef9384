// A panel: the watcher that status items register with, and a host that reads an item and its menu.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "support/PrivateSession.h"

namespace tallyvane::testing {

using Properties = std::map<std::string, sdbus::Variant>;
using Layout = sdbus::Struct<std::int32_t, Properties, std::vector<sdbus::Variant>>;

class FakePanel {
 public:
  /// `others` are connections of this thread whose messages are handled while the panel waits.
  explicit FakePanel(const PrivateSession& session, std::vector<sdbus::IConnection*> others = {})
      : connection_(session.connect()), pumped_(std::move(others)) {
    pumped_.push_back(connection_.get());
    watcher_ = sdbus::createObject(*connection_, "/StatusNotifierWatcher");
    watcher_->registerMethod("RegisterStatusNotifierItem")
        .onInterface(watcherName)
        .implementedAs([this](const std::string& service) { registered.push_back(service); });
    watcher_->registerProperty("IsStatusNotifierHostRegistered").onInterface(watcherName).withGetter([] {
      return true;
    });
    watcher_->finishRegistration();
    connection_->requestName(watcherName);
  }

  /// As a panel does that is started again: it knows of no item.
  void restart() {
    connection_->releaseName(watcherName);
    registered.clear();
    connection_->requestName(watcherName);
  }

  bool until(const std::function<bool()>& condition) { return waitUntil(pumped_, condition); }
  bool hasItem() {
    return until([&] { return !registered.empty(); });
  }

  /// Follows the signals of the item and of its menu.
  void follow() {
    for (const char* path : {"/StatusNotifierItem", "/MenuBar"}) {
      slots_.push_back(
          connection_->addMatch(std::string("type='signal',path='") + path + "'",
                                [this](sdbus::Message& message) { signals.push_back(message.getMemberName()); }));
    }
  }

  template <typename T>
  T property(const std::string& name) {
    sdbus::Variant value;
    call(itemPath, propertiesInterface, "Get", std::make_tuple(std::string(itemInterface), name), value);
    return value.get<T>();
  }
  [[nodiscard]] Layout layout(std::int32_t parent = 0, std::int32_t depth = -1, std::vector<std::string> names = {}) {
    std::uint32_t revision = 0;
    Layout root;
    call(menuPath, menuInterface, "GetLayout", std::make_tuple(parent, depth, names), revision, root);
    return root;
  }
  [[nodiscard]] std::vector<Layout> items(std::vector<std::string> names = {}) {
    std::vector<Layout> all;
    const Layout root = layout(0, -1, std::move(names));
    for (const sdbus::Variant& child : root.get<2>()) all.push_back(child.get<Layout>());
    return all;
  }
  /// Labels of the menu; "-" for a separator.
  [[nodiscard]] std::vector<std::string> labels() {
    std::vector<std::string> all;
    for (const Layout& item : items()) {
      const Properties& properties = item.get<1>();
      const auto label = properties.find("label");
      all.push_back(label == properties.end() ? "-" : label->second.get<std::string>());
    }
    return all;
  }
  /// The error's text; nothing when the click was taken.
  std::optional<std::string> click(std::int32_t id) {
    return call(menuPath, menuInterface, "Event",
                std::make_tuple(id, std::string("clicked"), sdbus::Variant(std::int32_t{0}), std::uint32_t{0}));
  }

  /// Calls the item or its menu and waits for the answer; the error's text when that is an error.
  template <typename... Arguments, typename... Results>
  std::optional<std::string> call(const std::string& path, const std::string& interface, const std::string& method,
                                  const std::tuple<Arguments...>& arguments, Results&... results) {
    if (registered.empty()) return "no item";
    auto proxy = sdbus::createProxy(*connection_, registered.back(), path);
    std::optional<std::string> failure = "no answer";
    bool answered = false;
    const auto take = [&](const sdbus::Error* error, Results... values) {
      answered = true;
      failure = error == nullptr ? std::nullopt : std::optional(error->getMessage());
      if (error == nullptr) std::tie(results...) = std::make_tuple(std::move(values)...);
    };
    auto invoker = proxy->callMethodAsync(method);
    invoker.onInterface(interface);
    std::apply([&](const auto&... each) { invoker.withArguments(each...); }, arguments);
    invoker.uponReplyInvoke(std::function<void(const sdbus::Error*, Results...)>(take));
    until([&] { return answered; });
    return failure;
  }

  static constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
  static constexpr const char* itemPath = "/StatusNotifierItem";
  static constexpr const char* menuPath = "/MenuBar";
  static constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
  static constexpr const char* menuInterface = "com.canonical.dbusmenu";
  static constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

  std::vector<std::string> registered;  ///< bus names of items, as they came
  std::vector<std::string> signals;     ///< names of what the item and its menu told

 private:
  std::unique_ptr<sdbus::IConnection> connection_;
  std::vector<sdbus::IConnection*> pumped_;
  std::unique_ptr<sdbus::IObject> watcher_;
  std::vector<sdbus::Slot> slots_;
};

}  // namespace tallyvane::testing
