#pragma once

#include <functional>
#include <string>

#include "freedesktop/SessionEnvironment.h"
#include "platform/Platform.h"

namespace tallyvane::agent {

/// Carries out what the user chooses in the status menu. What could not be opened goes to the log.
class MenuChoices {
 public:
  /// Opens a web address, and tells later what came of it.
  using Opener = std::function<void(const std::string& url, std::function<void(const Result<>& opened)> tell)>;

  /// `commandLine` is the absolute path of the program "tallyvane". All references outlive it, and the opener tells
  /// nothing after it is destroyed.
  MenuChoices(const SessionEnvironment& environment, std::string commandLine, Opener open, Log& log)
      : environment_(environment), commandLine_(std::move(commandLine)), open_(std::move(open)), log_(log) {}

  /// The overview for "showTallyvane"; for a bill its web address, or the bill itself where that cannot be opened.
  void carryOut(const Platform& platform, const MenuEntry& entry) const;
  /// In a window of the user's terminal that stays until a key is pressed.
  void showOverview(const Region& region) const;

 private:
  void openPaySite(const Region& region, const std::string& url, const std::string& bid) const;
  void showBill(const Region& region, const std::string& bid) const;
  void showInTerminal(const Region& region, std::vector<std::string> arguments) const;

  const SessionEnvironment& environment_;
  std::string commandLine_;
  Opener open_;
  Log& log_;
};

}  // namespace tallyvane::agent
