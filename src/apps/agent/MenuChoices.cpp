#include "agent/MenuChoices.h"

#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "freedesktop/Spawn.h"
#include "freedesktop/Terminal.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::agent {

namespace {

/// Runs the command that is its arguments, then waits for a key; its own name is the sentence that asks for one.
constexpr const char* untilKeyPressed =
    R"("$@"; printf '\n%s' "$0"; stty -icanon -echo min 1 time 0; dd bs=1 count=1 >/dev/null 2>&1)";

}  // namespace

void MenuChoices::carryOut(const Platform& platform, const MenuEntry& entry) const {
  if (entry.kind == MenuEntry::Kind::bill) {
    if (!openPaySite(platform, entry.representedObject)) showBill(platform, entry.representedObject);
  } else if (entry.action == "showTallyvane") {
    showOverview(platform.region);
  }
}

bool MenuChoices::openPaySite(const Platform& platform, const std::string& bid) const {
  const std::optional<Dictionary> bill = QMBillsLoader{platform}.loadBillWithID(bid);
  const std::string site = bill ? bill->valueOr(key::PaySite, std::string()) : std::string();
  if (site.empty()) return false;
  // A host with a port has a colon too, but no scheme.
  const bool hasScheme = site.find("://") != std::string::npos || site.starts_with("mailto:");
  const std::string url = hasScheme ? site : "http://" + site;
  const Result<> opened = platform.workspace.openUrl(url);
  if (!opened) log_.diagnostic("Cannot open " + url + ": " + opened.error());
  return static_cast<bool>(opened);
}

void MenuChoices::showOverview(const Region& region) const { showInTerminal(region, {"overview"}); }

void MenuChoices::showBill(const Platform& platform, const std::string& bid) const {
  showInTerminal(platform.region, {"show", bid});
}

void MenuChoices::showInTerminal(const Region& region, std::vector<std::string> arguments) const {
  std::vector<std::string> command{"/bin/sh", "-c", untilKeyPressed,
                                   region.localized("Press any key to close this window."), commandLine_};
  command.insert(command.end(), std::make_move_iterator(arguments.begin()), std::make_move_iterator(arguments.end()));
  auto inWindow = inTerminal(environment_, std::move(command));
  const Result<> started = inWindow ? spawnDetached(*inWindow) : Result<>(Error{inWindow.error()});
  if (!started) log_.diagnostic("Cannot show anything in a terminal: " + started.error());
}

}  // namespace tallyvane::agent
