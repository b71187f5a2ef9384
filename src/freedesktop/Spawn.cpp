#include "freedesktop/Spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "freedesktop/FileDescriptor.h"

namespace tallyvane {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// What the new process changes about itself before the program starts; each call gives an error number, or 0.
class SpawnPlan {
 public:
  SpawnPlan() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
  }
  ~SpawnPlan() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  int nullDevice(int descriptor, int mode) {
    return ::posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", mode, 0);
  }
  int ownSessionAndSignals() {
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    return ::posix_spawnattr_setflags(&attributes_,
                                      POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  int start(std::vector<std::string>& command) {
    pid_t process = 0;
    return ::posix_spawn(&process, command.front().c_str(), &actions_, &attributes_, pointersTo(command).data(),
                         environ);
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

}  // namespace

Result<> spawnDetached(std::vector<std::string> command) {
  if (command.empty()) return Error{"there is no program to start"};
  SpawnPlan plan;
  int failure = plan.nullDevice(STDIN_FILENO, O_RDONLY);
  if (failure == 0) failure = plan.nullDevice(STDOUT_FILENO, O_WRONLY);
  if (failure == 0) failure = plan.nullDevice(STDERR_FILENO, O_WRONLY);
  if (failure == 0) failure = plan.ownSessionAndSignals();
  if (failure == 0) failure = plan.start(command);
  if (failure != 0) return systemError(command.front(), failure);
  return {};
}

Result<int> runAttached(std::vector<std::string> command, std::vector<std::string> variables) {
  pid_t process = 0;
  const int failure = ::posix_spawn(&process, command.front().c_str(), nullptr, nullptr, pointersTo(command).data(),
                                    pointersTo(variables).data());
  if (failure != 0) return systemError(command.front(), failure);
  int status = 0;
  if (uninterrupted([&] { return ::waitpid(process, &status, 0); }) < 0) return systemError(command.front());
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace tallyvane
