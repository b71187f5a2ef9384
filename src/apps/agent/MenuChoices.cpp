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

/// Empty when the bill has none.
std::string paySiteOf(const Platform& platform, const std::string& bid) {
  const std::optional<Dictionary> bill = QMBillsLoader{platform}.loadBillWithID(bid);
  const std::string site = bill ? bill->valueOr(key::PaySite, std::string()) : std::string();
  // A host with a port has a colon too, but no scheme.
  const bool isWhole = site.empty() || site.find("://") != std::string::npos || site.starts_with("mailto:");
  return isWhole ? site : "http://" + site;
}

}  // namespace

void MenuChoices::carryOut(const Platform& platform, const MenuEntry& entry) const {
  if (entry.kind == MenuEntry::Kind::bill) {
    const std::string url = paySiteOf(platform, entry.representedObject);
    if (url.empty()) return showBill(platform.region, entry.representedObject);
    openPaySite(platform.region, url, entry.representedObject);
  } else if (entry.action == "showTallyvane") {
    showOverview(platform.region);
  }
}

/// The region is kept along: another may be the user's when the answer comes.
void MenuChoices::openPaySite(const Region& region, const std::string& url, const std::string& bid) const {
  open_(url, [this, region, url, bid](const Result<>& opened) {
    if (opened) return;
    log_.diagnostic("Cannot open " + url + ": " + opened.error());
    showBill(region, bid);
  });
}

void MenuChoices::showOverview(const Region& region) const { showInTerminal(region, {"overview"}); }

void MenuChoices::showBill(const Region& region, const std::string& bid) const {
  showInTerminal(region, {"show", bid});
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
