// Faults that strike an operation at its n-th access to files and settings.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <utility>

#include "support/CliDesktop.h"
#include "support/Killed.h"

namespace tallyvane::testing {

/// How a fault strikes.
enum class Strike {
  changeFails,     ///< one change of the files
  diskDies,        ///< every change from there on
  readFails,       ///< one reading
  diskUnreadable,  ///< every reading from there on
  settingsFail,    ///< every change of the settings from there on
  killed           ///< the program dies before a change of files or settings
};
constexpr Strike allStrikes[] = {Strike::changeFails,    Strike::diskDies,     Strike::readFails,
                                 Strike::diskUnreadable, Strike::settingsFail, Strike::killed};

/// What an operation did that was struck at its n-th access of that kind.
struct Struck {
  bool reached = false;  ///< there was an n-th access
  bool killed = false;
  Outcome outcome{};
};

using Operation = std::function<Outcome(CliDesktop&, FileStore&)>;
using FileContents = std::set<std::pair<std::string, std::string>>;

/// Every content that each file has before, during and after an operation that nothing strikes.
inline FileContents contentsDuring(CliDesktop& cli, const Operation& operation, Outcome& outcome) {
  FileContents seen;
  const auto note = [&] { seen.insert(cli.desktop.files.content.begin(), cli.desktop.files.content.end()); };
  FaultyFileStore noting(cli.desktop.files, [&](Access access) -> std::optional<std::string> {
    if (access != Access::read) note();
    return std::nullopt;
  });
  outcome = operation(cli, noting);
  note();
  return seen;
}

inline Struck strike(CliDesktop& cli, const Operation& operation, Strike kind, int access) {
  constexpr const char* reasons[] = {"No space left on device", "Permission denied", "Input/output error"};
  const bool isLasting = kind == Strike::diskDies || kind == Strike::diskUnreadable || kind == Strike::settingsFail;
  Struck struck;
  int accesses = 0;
  const auto strikesNow = [&] {
    ++accesses;
    struck.reached = struck.reached || accesses == access;
    return isLasting ? accesses >= access : accesses == access;
  };
  FaultyFileStore store(cli.desktop.files, [&](Access asked) -> std::optional<std::string> {
    const bool isRead = kind == Strike::readFails || kind == Strike::diskUnreadable;
    if (kind == Strike::settingsFail || isRead != (asked == Access::read) || !strikesNow()) return std::nullopt;
    if (kind == Strike::killed) throw Killed();
    return reasons[access % 3];
  });
  cli.desktop.defaults.beforeWrite = [&] {
    if (kind == Strike::settingsFail) cli.desktop.defaults.failing = strikesNow();
    if (kind == Strike::killed && strikesNow()) throw Killed();
  };
  try {
    struck.outcome = operation(cli, store);
  } catch (const Killed&) {
    struck.killed = true;
  }
  cli.desktop.defaults.beforeWrite = nullptr;
  cli.desktop.defaults.failing = false;
  return struck;
}

}  // namespace tallyvane::testing
