// A home folder of the test's own, and the command line as built, run in it as its own process.
#pragma once

#include <stdlib.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::testing {

struct Said {
  int status;
  std::string text;  ///< on both streams
};

class CommandLineHome {
 public:
  /// May be called by several threads at once.
  Said run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), program);
    return runToEnd(std::move(arguments));
  }
  /// Behind words of a shell that end in running "$0" with the arguments.
  Said runAfter(const std::string& words, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"/bin/sh", "-c", words, program});
    return runToEnd(std::move(arguments));
  }
  /// One that goes on while the test does.
  std::unique_ptr<ChildProcess> start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), program);
    return std::make_unique<ChildProcess>(std::move(arguments), variables(), nextOutput());
  }

  /// On a terminal of 80 columns, as a person sees it.
  Said runOnTerminal(std::vector<std::string> arguments) {
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal < 0 || ::grantpt(terminal) != 0 || ::unlockpt(terminal) != 0)
      throw std::runtime_error("there is no terminal to be had");
    arguments.insert(arguments.begin(), program);
    ChildProcess process(std::move(arguments), variables(), ::ptsname(terminal));
    std::string text;
    char block[4096];
    for (ssize_t size = 0; (size = ::read(terminal, block, sizeof block)) > 0;)
      text.append(block, static_cast<std::size_t>(size));
    ::close(terminal);
    std::erase(text, '\r');
    return {process.ended(std::chrono::minutes{2}).value_or(-1), text};
  }

  const std::string program = TALLYVANE_BUILD_FOLDER "/bin/tallyvane";
  std::string locale = "en_US.UTF-8";
  TemporaryFolder folder;
  const std::string data = folder.path + "/share";
  const std::string config = folder.path + "/config";
  const std::string state = folder.path + "/state";
  const std::string dataFolder = data + "/Tallyvane/Tallyvane.tvdata";

 private:
  std::string nextOutput() { return folder.path + "/output-" + std::to_string(++runs_); }
  Said runToEnd(std::vector<std::string> command) {
    const std::string output = nextOutput();
    ChildProcess process(std::move(command), variables(), output);
    const int status = process.ended(std::chrono::minutes{2}).value_or(-1);
    Said said{status, process.said()};
    std::filesystem::remove(output);
    return said;
  }
  [[nodiscard]] std::vector<std::string> variables() const {
    return {"PATH=/usr/bin:/bin",
            "HOME=" + folder.path,
            "LANG=" + locale,
            "TZ=America/New_York",
            "XDG_DATA_HOME=" + data,
            "XDG_CONFIG_HOME=" + config,
            "XDG_STATE_HOME=" + state,
            "XDG_CONFIG_DIRS=" + folder.path + "/none",
            "NO_COLOR=1"};
  }
  std::atomic<int> runs_ = 0;
};

}  // namespace tallyvane::testing
