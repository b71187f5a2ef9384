#include <cstdio>
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
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (option == "--version") {
    std::puts("tallyvane-helper " TALLYVANE_VERSION);
  } else if (option == "--help") {
    std::fputs(usage, stdout);
  } else {
    tallyvane::SystemLog log("tallyvane-helper", option == "--verbose");
    tallyvane::helper::runLoginHelper(tallyvane::processEnvironment(), log);
  }
  return 0;
}
