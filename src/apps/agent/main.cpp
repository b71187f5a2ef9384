#include <sdbus-c++/sdbus-c++.h>

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "agent/Agent.h"
#include "freedesktop/Gettext.h"
#include "freedesktop/SystemLog.h"
#include "freedesktop/SystemRegion.h"

namespace {

using namespace tallyvane;

constexpr const char* usage =
    "Usage: tallyvane-agent [--verbose] [URL]...\n"
    "The resident part of Tallyvane: shows the bills due soon in the status bar. A second start shows the overview\n"
    "through the first one and ends. SIGTERM ends it.\n"
    "\n"
    "  --verbose  say on standard error too what goes to the journal\n"
    "  --help     show this text\n"
    "  --version  show the version\n";

struct Arguments {
  bool help = false;
  bool version = false;
  bool verbose = false;
  std::string unknown;
  std::vector<std::string> urls;
};

Arguments argumentsOf(int argc, char** argv) {
  Arguments arguments;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help") {
      arguments.help = true;
    } else if (argument == "--version") {
      arguments.version = true;
    } else if (argument == "--verbose") {
      arguments.verbose = true;
    } else if (argument.starts_with('-')) {
      arguments.unknown = argument;
    } else {
      arguments.urls.emplace_back(argument);
    }
  }
  return arguments;
}

int fail(const std::string& sentence) {
  std::fputs(("tallyvane-agent: " + sentence + "\n").c_str(), stderr);
  return 1;
}

int runAgent(const Arguments& arguments) {
  useLanguage(systemLocale(), catalogueFolder(ownExecutable()));
  const Environment environment = processEnvironment();
  SystemLog log("tallyvane-agent", arguments.verbose);
  agent::Surroundings surroundings{XdgFolders::of(environment), SessionEnvironment::of(environment),
                                   [&log] { return systemRegion(log); }, ownExecutable()};
  SessionBus bus(surroundings.session.busAddress);
  const auto connection = bus.connection();
  if (!connection) return fail("cannot run, for " + connection.error() + ".");
  agent::Agent agent(bus, **connection, std::move(surroundings), log);
  if (agent.becomesTheOne()) {
    agent.run();
    return 0;
  }
  const Result<> handed = agent::handOver(**connection, arguments.urls);
  return handed ? 0 : fail("runs already, but could not be reached: " + handed.error() + ".");
}

}  // namespace

int main(int argc, char** argv) {
  const Arguments arguments = argumentsOf(argc, argv);
  if (!arguments.unknown.empty()) {
    std::fputs(("tallyvane-agent: unknown option " + arguments.unknown + "\n" + usage).c_str(), stderr);
    return 2;
  }
  if (arguments.help || arguments.version) {
    std::fputs(arguments.help ? usage : "tallyvane-agent " TALLYVANE_VERSION "\n", stdout);
    return 0;
  }
  try {
    return runAgent(arguments);
  } catch (const std::exception& error) {
    return fail(std::string(error.what()) + ".");
  }
}
