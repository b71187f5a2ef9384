#include "agent/ApplicationObject.h"

#include <map>
#include <utility>

namespace tallyvane::agent {

namespace {

constexpr const char* applicationPath = "/com/Quillmoor/Tallyvane";
constexpr const char* applicationInterface = "org.freedesktop.Application";
using PlatformData = std::map<std::string, sdbus::Variant>;

bool hasOwner(sdbus::IConnection& connection) {
  bool owned = false;
  sdbus::createProxy(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus")
      ->callMethod("NameHasOwner")
      .onInterface("org.freedesktop.DBus")
      .withArguments(std::string(applicationName))
      .storeResultsTo(owned);
  return owned;
}

}  // namespace

ApplicationObject::ApplicationObject(sdbus::IConnection& connection, std::function<void()> activated)
    : connection_(connection),
      activated_(std::move(activated)),
      object_(sdbus::createObject(connection, applicationPath)) {
  const auto method = [this](const std::string& name, auto call) {
    object_->registerMethod(name).onInterface(applicationInterface).implementedAs(std::move(call));
  };
  method("Activate", [this](const PlatformData& /*data*/) { activated_(); });
  // The launch URL, the only one that is claimed, asks that the application run; who can answer does.
  method("Open", [](const std::vector<std::string>& /*urls*/, const PlatformData& /*data*/) {});
  method("ActivateAction", [this](const std::string& action, const std::vector<sdbus::Variant>& /*parameter*/,
                                  const PlatformData& /*data*/) {
    if (action != "showTallyvane")
      throw sdbus::Error("org.freedesktop.DBus.Error.InvalidArgs", "no action '" + action + "'");
    activated_();
  });
  object_->finishRegistration();
}

bool ApplicationObject::takeName() {
  try {
    connection_.requestName(applicationName);
    return true;
  } catch (const sdbus::Error&) {
    if (!hasOwner(connection_)) throw;
    return false;
  }
}

Result<> handOver(sdbus::IConnection& connection, const std::vector<std::string>& urls) {
  try {
    auto running = sdbus::createProxy(connection, applicationName, applicationPath);
    if (urls.empty()) {
      running->callMethod("Activate").onInterface(applicationInterface).withArguments(PlatformData());
    } else {
      running->callMethod("Open").onInterface(applicationInterface).withArguments(urls, PlatformData());
    }
    return {};
  } catch (const sdbus::Error& error) {
    return Error{error.getMessage()};
  }
}

}  // namespace tallyvane::agent
