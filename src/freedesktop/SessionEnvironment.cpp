#include "freedesktop/SessionEnvironment.h"

#include <unistd.h>

#include "foundation/Ascii.h"
#include "freedesktop/PosixPaths.h"
#include "freedesktop/TextParts.h"

namespace tallyvane {

namespace {

constexpr std::string_view systemProgramFolders = "/usr/local/bin:/usr/bin:/bin";

/// The user's folder, if there is one, before the system's.
std::vector<std::string> withOwnFirst(const std::string& own, std::vector<std::string> system) {
  if (own.starts_with('/')) system.insert(system.begin(), own);
  return system;
}

std::vector<std::string> lowerCaseParts(std::string_view list) {
  std::vector<std::string> parts;
  while (!list.empty()) {
    if (const std::string_view part = takeUpTo(list, ':'); !part.empty()) parts.push_back(lowerAscii(part));
  }
  return parts;
}

/// In a bus address everything but these stands as % and two hexadecimal digits.
std::string escapedForAddress(std::string_view path) {
  constexpr std::string_view plain = "-_/.*";
  constexpr std::string_view digits = "0123456789abcdef";
  std::string escaped;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (isAsciiAlphanumeric(c) || plain.find(c) != std::string_view::npos) {
      escaped += c;
    } else {
      escaped.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
  }
  return escaped;
}

}  // namespace

SessionEnvironment SessionEnvironment::of(const Environment& environment) {
  const auto variable = [&](std::string_view name, std::string_view otherwise = "") {
    const std::string value = environment(name).value_or("");
    return value.empty() ? std::string(otherwise) : value;
  };
  const XdgFolders folders = XdgFolders::of(environment);
  SessionEnvironment session;
  session.configFolders = withOwnFirst(folders.configHome, folders.configDirs);
  session.dataFolders = withOwnFirst(folders.dataHome, folders.dataDirs);
  session.programFolders = absoluteFoldersIn(variable("PATH", systemProgramFolders));
  session.desktops = lowerCaseParts(variable("XDG_CURRENT_DESKTOP"));
  session.terminal = variable("TERMINAL");
  const std::string runtime = variable("XDG_RUNTIME_DIR");
  if (runtime.starts_with('/')) session.runtimeFolder = withoutTrailingSlashes(runtime);
  session.busAddress = variable("DBUS_SESSION_BUS_ADDRESS");
  if (session.busAddress.empty() && !session.runtimeFolder.empty())
    session.busAddress = "unix:path=" + escapedForAddress(session.runtimeFolder + "/bus");
  return session;
}

std::optional<std::string> programPath(const SessionEnvironment& environment, std::string_view program) {
  const auto runnable = [](const std::string& path) { return ::access(path.c_str(), X_OK) == 0; };
  if (program.find('/') != std::string_view::npos) {
    std::string path(program);
    return path.starts_with('/') && runnable(path) ? std::optional(std::move(path)) : std::nullopt;
  }
  if (program.empty()) return std::nullopt;
  for (const std::string& folder : environment.programFolders) {
    std::string path = folder + "/" + std::string(program);
    if (runnable(path)) return path;
  }
  return std::nullopt;
}

}  // namespace tallyvane
