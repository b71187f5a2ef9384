// A program that is killed before its n-th change of files or settings.
#pragma once

#include "support/CliDesktop.h"

namespace tallyvane::testing {

/// Thrown where the program dies; nothing of it runs after that but destructors.
struct Killed {};

/// Runs a command that is killed before its n-th change (1 is the first); whether it came to that.
inline bool killedAt(CliDesktop& cli, int change, const std::vector<std::string>& arguments) {
  int changes = 0;
  const auto count = [&] {
    if (++changes >= change) throw Killed();
  };
  FaultyFileStore store(cli.desktop.files, [&](Access access) -> std::optional<std::string> {
    if (access != Access::read) count();
    return std::nullopt;
  });
  cli.desktop.defaults.beforeWrite = count;
  bool killed = false;
  try {
    (void)cli.runOn(store, arguments);
  } catch (const Killed&) {
    killed = true;
  }
  cli.desktop.defaults.beforeWrite = nullptr;
  return killed;
}

}  // namespace tallyvane::testing
