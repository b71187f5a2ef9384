#pragma once

#include <string>

#include "freedesktop/SessionEnvironment.h"
#include "platform/Platform.h"

namespace tallyvane::agent {

/// Carries out what the user chooses in the status menu. What could not be opened goes to the log.
class MenuChoices {
 public:
  /// `commandLine` is the absolute path of the program "tallyvane". Both references outlive it.
  MenuChoices(const SessionEnvironment& environment, std::string commandLine, Log& log)
      : environment_(environment), commandLine_(std::move(commandLine)), log_(log) {}

  /// The overview for "showTallyvane"; for a bill its web address, or the bill itself where that cannot be opened.
  void carryOut(const Platform& platform, const MenuEntry& entry) const;
  /// In a window of the user's terminal that stays until a key is pressed.
  void showOverview(const Region& region) const;

 private:
  void showBill(const Platform& platform, const std::string& bid) const;
  [[nodiscard]] bool openPaySite(const Platform& platform, const std::string& bid) const;
  void showInTerminal(const Region& region, std::vector<std::string> arguments) const;

  const SessionEnvironment& environment_;
  std::string commandLine_;
  Log& log_;
};

}  // namespace tallyvane::agent
