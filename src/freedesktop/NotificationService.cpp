#include "freedesktop/NotificationService.h"

#include <chrono>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "foundation/Markup.h"

namespace tallyvane {

namespace {

constexpr const char* serviceName = "org.freedesktop.Notifications";
constexpr const char* servicePath = "/org/freedesktop/Notifications";
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* viewAction = "view";

std::unique_ptr<sdbus::IProxy> busItself(sdbus::IConnection& connection) {
  return sdbus::createProxy(connection, busName, "/org/freedesktop/DBus");
}

/// Differs from session to session, so that the names that the bus gives out are not taken for those of an earlier one.
std::string identityOfBus(sdbus::IConnection& connection) {
  std::string identity;
  busItself(connection)->callMethod("GetId").onInterface(busName).storeResultsTo(identity);
  return identity;
}

/// Empty while nobody owns it.
std::string ownerOf(sdbus::IConnection& connection, const std::string& name) {
  std::string owner;
  try {
    busItself(connection)->callMethod("GetNameOwner").onInterface(busName).withArguments(name).storeResultsTo(owner);
  } catch (const sdbus::Error& error) {
    if (error.getName() != "org.freedesktop.DBus.Error.NameHasNoOwner") throw;
  }
  return owner;
}

std::map<std::string, sdbus::Variant> hintsFor(const UserNotification& notification) {
  std::map<std::string, sdbus::Variant> hints;
  hints["desktop-entry"] = sdbus::Variant(std::string("com.Quillmoor.Tallyvane"));
  hints["category"] = sdbus::Variant(std::string("x-tallyvane.bill"));
  if (notification.soundName == "default") {
    hints["sound-name"] = sdbus::Variant(std::string("message-new-instant"));
  } else {
    hints["suppress-sound"] = sdbus::Variant(true);
  }
  return hints;
}

}  // namespace

NotificationService::NotificationService(sdbus::IConnection& connection, Told told)
    : connection_(connection),
      told_(std::move(told)),
      busIdentity_(identityOfBus(connection)),
      bus_(busItself(connection)),
      service_(sdbus::createProxy(connection, serviceName, servicePath)) {
  watch();
  follow(ownerOf(connection_, serviceName));
}

std::string NotificationService::identityOf(const std::string& uniqueName) const {
  return uniqueName.empty() ? std::string() : busIdentity_ + uniqueName;
}

void NotificationService::follow(const std::string& owner) { current_ = identityOf(owner); }

void NotificationService::watch() {
  const std::string name(serviceName);
  ownerChanges_ =
      connection_.addMatch("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + name + "'",
                           [this](sdbus::Message& message) {
                             std::string changed;
                             std::string oldOwner;
                             std::string newOwner;
                             message >> changed >> oldOwner >> newOwner;
                             follow(newOwner);
                             if (!newOwner.empty()) told_.appeared();
                           });
  actions_ = connection_.addMatch("type='signal',sender='" + name + "',interface='" + name + "',member='ActionInvoked'",
                                  [this](sdbus::Message& message) {
                                    std::uint32_t number = 0;
                                    std::string action;
                                    message >> number >> action;
                                    if (action == viewAction) told_.viewed({identityOf(message.getSender()), number});
                                  });
}

void NotificationService::start(std::function<void(const Result<>& started)> answered) {
  if (std::exchange(isStarting_, true)) return;
  constexpr std::uint32_t noFlags = 0;
  bus_->callMethodAsync("StartServiceByName")
      .onInterface(busName)
      .withTimeout(std::chrono::minutes{2})  // the bus itself gives up before
      .withArguments(std::string(serviceName), noFlags)
      .uponReplyInvoke([this, answered = std::move(answered)](const sdbus::Error* error, std::uint32_t /*reply*/) {
        isStarting_ = false;
        answered(error == nullptr ? Result<>() : Result<>(Error{error->getMessage()}));
      });
}

void NotificationService::show(const UserNotification& notification, Answered answered) {
  constexpr std::int32_t untilDealtWith = 0;
  constexpr std::uint32_t replacingNone = 0;
  std::vector<std::string> actions;
  if (notification.hasActionButton) actions = {viewAction, notification.actionButtonTitle};
  auto call = service_->createMethodCall(serviceName, "Notify");
  call << std::string("Tallyvane") << replacingNone << std::string("com.Quillmoor.Tallyvane") << notification.title
       << markupEscaped(notification.informativeText) << actions << hintsFor(notification) << untilDealtWith;
  const auto answer = [this, answered = std::move(answered)](sdbus::MethodReply& reply, const sdbus::Error* error) {
    if (error != nullptr) return answered(Error{error->getMessage()});
    std::uint32_t number = 0;
    reply >> number;
    answered(ShownId{identityOf(reply.getSender()), number});
  };
  // However slow it is: it shows it all the same, and asked again it would show it twice. When the service ends, the
  // bus answers in its place.
  service_->callMethod(call, answer, std::numeric_limits<std::uint64_t>::max());
}

void NotificationService::close(const ShownId& shown) {
  if (shown.service.empty() || shown.service != current_) return;
  service_->callMethodAsync("CloseNotification")
      .onInterface(serviceName)
      .withArguments(shown.number)
      .uponReplyInvoke([](const sdbus::Error* /*error*/) {});
}

}  // namespace tallyvane
