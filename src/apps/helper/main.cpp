#include <cstdio>
#include <span>
#include <string_view>

#include "freedesktop/SystemLog.h"
#include "helper/LoginHelper.h"

namespace {

constexpr const char* usage =
    "Usage: tallyvane-helper [--verbose]\n"
    "Starts Tallyvane's resident agent over the session bus unless it is running, and ends.\n"
    "Meant to be run at login. There is nothing to set.\n"
    "\n"
    "  --verbose  say on standard error too what goes to the journal\n"
    "  --help     show this text\n"
    "  --version  show the version\n";

}  // namespace

/// The exit status is 0 in every case: a login must not fail for want of this program.
int main(int argc, char** argv) {
  bool verbose = false;
  for (const std::string_view option : std::span(argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0))) {
    if (option == "--version") {
      std::puts("tallyvane-helper " TALLYVANE_VERSION);
      return 0;
    }
    verbose = option == "--verbose";
    if (verbose) continue;
    if (option != "--help") std::fputs("tallyvane-helper: unknown option\n", stderr);
    std::fputs(usage, option == "--help" ? stdout : stderr);
    return 0;
  }
  tallyvane::SystemLog log("tallyvane-helper", verbose);
  tallyvane::helper::runLoginHelper(tallyvane::processEnvironment(), log);
  return 0;
}
