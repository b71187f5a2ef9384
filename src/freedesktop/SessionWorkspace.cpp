#include "freedesktop/SessionWorkspace.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <map>
#include <optional>

#include "foundation/Ascii.h"
#include "freedesktop/Spawn.h"
#include "freedesktop/Terminal.h"

namespace tallyvane {

namespace {

/// The scheme in lower case; nothing when the text does not begin with one.
std::optional<std::string> schemeOf(std::string_view url) {
  const std::size_t colon = url.find(':');
  if (colon == std::string_view::npos || colon == 0) return std::nullopt;
  const std::string_view scheme = url.substr(0, colon);
  const auto isPart = [](char c) { return isAsciiAlphanumeric(c) || c == '+' || c == '-' || c == '.'; };
  if (!isAsciiLetter(scheme.front()) || !std::all_of(scheme.begin(), scheme.end(), isPart)) return std::nullopt;
  return lowerAscii(scheme);
}

std::string secondsText(std::chrono::milliseconds limit) {
  const auto whole = limit.count();
  return whole % 1000 == 0 ? std::to_string(whole / 1000) + " s" : std::to_string(whole) + " ms";
}

Error callFailure(const std::string& name, const sdbus::Error& error, std::chrono::milliseconds limit) {
  const std::string& kind = error.getName();
  const bool late = kind == "org.freedesktop.DBus.Error.NoReply" || kind == "org.freedesktop.DBus.Error.Timeout" ||
                    kind == "System.Error.ETIMEDOUT";
  if (late) return Error{name + " did not answer within " + secondsText(limit)};
  return Error{name + " could not be reached: " + error.getMessage()};
}

}  // namespace

SessionWorkspace::SessionWorkspace(SessionBus& bus, FileStore& files, SessionEnvironment environment, Log& log)
    : bus_(bus), files_(files), environment_(std::move(environment)), log_(log) {}

SessionWorkspace::~SessionWorkspace() = default;

std::vector<std::string> SessionWorkspace::runningApplications() {
  std::vector<std::string> names;
  const auto connection = bus_.connection();
  if (!connection) {
    log_.diagnostic("Nothing counts as running: " + connection.error());
    return names;
  }
  try {
    auto daemon = sdbus::createProxy(**connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
    daemon->callMethod("ListNames").onInterface("org.freedesktop.DBus").storeResultsTo(names);
  } catch (const sdbus::Error& error) {
    log_.diagnostic("Nothing counts as running: " + callFailure("the session bus", error, bus_.replyLimit()).text);
    names.clear();
  }
  std::erase_if(names, [](const std::string& name) { return name.starts_with(':'); });
  return names;
}

Result<DesktopEntry> SessionWorkspace::handlerOf(const std::string& url) {
  const std::optional<std::string> scheme = schemeOf(url);
  if (!scheme) return Error{"'" + url + "' is not a URL"};
  auto entry = DesktopEntries(files_, environment_).handlerOfScheme(*scheme);
  if (!entry) return Error{"no installed application opens " + *scheme + " URLs"};
  return std::move(*entry);
}

Result<> SessionWorkspace::openUrl(const std::string& url) {
  const auto entry = handlerOf(url);
  if (!entry) return Error{entry.error()};
  return entry->dbusActivatable ? activate(*entry, url) : run(*entry, url);
}

void SessionWorkspace::startOpeningUrl(const std::string& url, Opened opened) {
  const auto entry = handlerOf(url);
  if (!entry) return opened(Error{entry.error()});
  if (!entry->dbusActivatable) return opened(run(*entry, url));
  if (const Result<> started = startActivating(*entry, url, opened); !started) opened(started);
}

/// The call itself starts an application that is not running: the bus knows how, and holds the call until it is up.
Result<> SessionWorkspace::activate(const DesktopEntry& entry, const std::string& url) {
  const auto connection = bus_.connection();
  if (!connection) return Error{connection.error()};
  const ApplicationAddress address = applicationAddress(entry.id);
  try {
    auto application = sdbus::createProxy(**connection, address.name, address.objectPath);
    application->callMethod("Open")
        .onInterface("org.freedesktop.Application")
        .withArguments(std::vector<std::string>{url}, std::map<std::string, sdbus::Variant>{});
    return {};
  } catch (const sdbus::Error& error) {
    return callFailure(address.name, error, bus_.replyLimit());
  }
}

/// An error when the question could not even be asked; then `opened` is not told.
Result<> SessionWorkspace::startActivating(const DesktopEntry& entry, const std::string& url, const Opened& opened) {
  asked_.remove_if([](const Asked& asked) { return asked.answered; });
  const auto connection = bus_.connection();
  if (!connection) return Error{connection.error()};
  const ApplicationAddress address = applicationAddress(entry.id);
  try {
    Asked& asked = asked_.emplace_back();
    asked.application = sdbus::createProxy(**connection, address.name, address.objectPath);
    asked.application->callMethodAsync("Open")
        .onInterface("org.freedesktop.Application")
        .withTimeout(bus_.replyLimit())
        .withArguments(std::vector<std::string>{url}, std::map<std::string, sdbus::Variant>{})
        .uponReplyInvoke([this, &asked, name = address.name, opened](const sdbus::Error* error) {
          asked.answered = true;
          opened(error == nullptr ? Result<>() : Result<>(callFailure(name, *error, bus_.replyLimit())));
        });
    return {};
  } catch (const sdbus::Error& error) {
    asked_.pop_back();
    return callFailure(address.name, error, bus_.replyLimit());
  }
}

Result<> SessionWorkspace::run(const DesktopEntry& entry, const std::string& url) {
  auto command = commandForUrl(entry, url);
  if (command && entry.terminal) command = inTerminal(environment_, *command);
  if (!command) return Error{entry.path + ": " + command.error()};
  const auto program = programPath(environment_, command->front());
  if (!program) return Error{entry.path + ": there is no program '" + command->front() + "'"};
  command->front() = *program;
  return spawnDetached(*command);
}

}  // namespace tallyvane
