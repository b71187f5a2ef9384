// Programs that a test starts. Each is ended, by its id, with the object that stands for it.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tallyvane::testing {

/// How long a test waits for what must happen; far longer than it takes on a busy machine.
inline constexpr std::chrono::seconds patience{30};

class ChildProcess {
 public:
  /// What the program says on either stream goes to the file `output`. `variables` are its whole environment.
  ChildProcess(std::vector<std::string> command, std::vector<std::string> variables, const std::string& output)
      : output_(output) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::posix_spawn_file_actions_adddup2(&actions, 1, 2);
    const int failure = ::posix_spawn(&id_, command.front().c_str(), &actions, nullptr, pointers(command).data(),
                                      pointers(variables).data());
    ::posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("cannot start " + command.front());
  }
  ~ChildProcess() {
    if (status_) return;
    signal(SIGKILL);
    ::waitpid(id_, nullptr, 0);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  [[nodiscard]] pid_t id() const { return id_; }
  void signal(int number) const { ::kill(id_, number); }

  /// The exit status, or 1000 and the signal's number; nothing when the program does not end in time.
  std::optional<int> ended(std::chrono::milliseconds limit = patience) {
    if (status_) return status_;
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, id_, 0));
    pollfd polled{descriptor, POLLIN, 0};
    const bool over = ::poll(&polled, 1, static_cast<int>(limit.count())) == 1;
    ::close(descriptor);
    if (!over) return std::nullopt;
    int status = 0;
    ::waitpid(id_, &status, 0);
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return status_;
  }

  [[nodiscard]] std::string said() const {
    std::ifstream file(output_);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  static std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (std::string& text : texts) all.push_back(text.data());
    all.push_back(nullptr);
    return all;
  }

  std::string output_;
  pid_t id_ = 0;
  std::optional<int> status_;
};

}  // namespace tallyvane::testing
