// The whole run of the login helper that finds the application running, against a program that only makes the same
// call, on a session bus of its own.
#include <spawn.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>

#include "Ratio.h"

namespace tallyvane::bench {
namespace {

pid_t spawn(const std::string& program, std::vector<std::string> arguments,
            const posix_spawn_file_actions_t* actions = nullptr) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (::posix_spawnp(&child, program.c_str(), actions, nullptr, argv.data(), environ) != 0)
    throw std::runtime_error("cannot start " + program);
  return child;
}

int run(const char* program) {
  int status = 0;
  ::waitpid(spawn(program, {}), &status, 0);
  if (status != 0) throw std::runtime_error(std::string(program) + " failed");
  return status;
}

/// A session bus for this process and its children, on which the application's name is owned.
class PrivateBus {
 public:
  PrivateBus() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addclose(&actions, ends[0]);
    daemon_ = spawn("dbus-daemon",
                    {"--session", "--nofork", "--nopidfile", "--print-address=" + std::to_string(ends[1])}, &actions);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    std::string address(1024, '\0');
    const ssize_t length = ::read(ends[0], address.data(), address.size());
    ::close(ends[0]);
    if (length <= 0) throw std::runtime_error("the session bus did not start");
    address.resize(address.find('\n'));
    ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    if (sd_bus_open_user(&owner_) < 0 || sd_bus_request_name(owner_, "com.Quillmoor.Tallyvane", 0) < 0)
      throw std::runtime_error("the application's name cannot be owned");
  }
  ~PrivateBus() {
    sd_bus_flush_close_unref(owner_);
    ::kill(daemon_, SIGTERM);
    ::waitpid(daemon_, nullptr, 0);
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

 private:
  pid_t daemon_ = 0;
  sd_bus* owner_ = nullptr;
};

void loginHelper(benchmark::State& state) {
  const PrivateBus bus;
  compareWithFloor(
      state, Work::elsewhere, 2.5, [] { return run(BUS_FLOOR_PROGRAM); }, [] { return run(HELPER_PROGRAM); });
}
BENCHMARK(loginHelper)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(300);

}  // namespace
}  // namespace tallyvane::bench
