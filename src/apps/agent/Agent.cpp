#include "agent/Agent.h"

#include <malloc.h>

#include <chrono>
#include <exception>
#include <utility>

#include "agent/DueSoonFeed.h"
#include "common/PreviousVersion.h"
#include "common/ProgramLock.h"
#include "foundation/Calendar.h"
#include "freedesktop/PosixPaths.h"
#include "storage/DataFolder.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::agent {

namespace {

/// One operation writes several files; they are looked at once, after the last.
constexpr std::chrono::milliseconds settlingTime{150};

const std::string& pictureFolder(const SessionEnvironment& session) {
  static const std::string otherwise = "/tmp";
  return session.runtimeFolder.empty() ? otherwise : session.runtimeFolder;
}

/// The bill index and the bills; tags, income and mail stand in no menu.
bool isFileOfBills(std::string_view name) {
  if (!name.ends_with(".plist") || name.starts_with('.')) return false;
  return name != tagIndexName && name != incomeIndexName && name != mailIndexName;
}

bool sameRegion(const Region& left, const Region& right) {
  return left.locale == right.locale && left.timeZone == right.timeZone;
}

}  // namespace

Agent::Agent(SessionBus& bus, sdbus::IConnection& connection, Surroundings surroundings, Log& log)
    : surroundings_(std::move(surroundings)),
      log_(log),
      files_(surroundings_.folders.dataHome),
      resources_(resourceFolders(surroundings_.executable, surroundings_.folders), files_),
      workspace_(bus, files_, surroundings_.session, log),
      choices_(
          surroundings_.session, parentOf(surroundings_.executable) + "/tallyvane",
          [this](const std::string& url, auto tell) { workspace_.startOpeningUrl(url, std::move(tell)); }, log),
      // Choices are carried out after the bus's message has been answered, so that no panel waits for them.
      statusBar_(
          bus, queue_, files_, resources_, pictureFolder(surroundings_.session), log,
          [this](const MenuEntry& entry) { queue_.post([this, entry] { choices_.carryOut(platform(), entry); }); }),
      object_(connection, [this] { queue_.post([this] { choices_.showOverview(platform().region); }); }),
      loop_(connection, [this] { endOfTurn(); }),
      reminders_(
          connection, [this]() -> programs::DesktopPlatform& { return *hosted_.desktop; },
          [this](const std::string& bid) { queue_.post([this, bid] { showBill(bid); }); }, log),
      mail_([this]() -> programs::DesktopPlatform& { return *hosted_.desktop; }, log),
      backups_(log) {
  reminders_.attachTo(loop_);
  mail_.attachTo(loop_);
  loop_.add(signals_.descriptor(), [this] {
    if (signals_.askToEnd()) loop_.end();
  });
  loop_.add(fileWatch_.descriptor(), [this] {
    if (fileWatch_.takeChanges()) settling_.start(settlingTime);
  });
  loop_.add(settling_.descriptor(), [this] {
    settling_.acknowledge();
    refresh();
  });
  loop_.add(midnight_.descriptor(), [this] {
    midnight_.acknowledge();
    refresh();
  });
  // Who launched the agent is answered first.
  queue_.post([this] { refresh(); });
}

void Agent::run() {
  followRegion();  // before anything: a notification of an earlier run may be asked about at once
  try {
    runLoop();
  } catch (...) {
    mail_.endRequests();
    throw;
  }
  mail_.endRequests();
}

void Agent::runLoop() {
  try {
    loop_.run();
  } catch (const sdbus::Error& error) {
    log_.diagnostic("The session bus is gone, so the agent ends: " + error.getMessage());
  }
}

void Agent::endOfTurn() { queue_.runPending(); }

/// The one way in which anything is brought up to date, whatever has changed. Files are watched before they are read,
/// so that no change falls in between.
void Agent::refresh() {
  const auto attempt = [this](const char* failure, const std::function<void()>& part) {
    try {
      part();
    } catch (const std::exception& error) {
      log_.diagnostic(failure + std::string(": ") + error.what());
    }
  };
  attempt("What has changed could not be told", [this] {
    followRegion();
    (void)platform().defaults.synchronize();
    watchFiles();
    waitForMidnight();
  });
  attempt("The status menu could not be brought up to date", [this] { feed(); });
  attempt("The reminders could not be brought up to date", [this] { reminders_.bringUpToDate(); });
  attempt("The backup could not be made", [this] {
    if (!backups_.bringUpToDate(*hosted_.desktop)) settling_.start(settlingTime);
  });
  attempt("An import could not be offered", [this] { offerImport(); });
}

/// Once, and quietly: who opens Tallyvane from the menu is told in the overview.
void Agent::offerImport() {
  if (std::exchange(offeredImport_, true)) return;
  if (const auto folder = programs::folderToOfferForImport(platform()))
    log_.diagnostic("The bills of the previous version in " + *folder + " can be brought in: tallyvane import");
}

/// As the menu shows it when it is chosen there.
void Agent::showBill(const std::string& bid) {
  MenuEntry entry;
  entry.kind = MenuEntry::Kind::bill;
  entry.representedObject = bid;
  choices_.carryOut(platform(), entry);
}

/// Under the programs' lock, so that no other program's listing comes between the snapshot and what is told of it.
/// Nobody is kept waiting here: while another program writes, the agent comes back later.
void Agent::feed() {
  const auto lock = programs::ProgramLock::tryTake(hosted_.desktop->files(), hosted_.desktop->paths().lock);
  if (!lock) log_.diagnostic("Read without the programs' lock: " + lock.error());
  if (lock && !*lock) return settling_.start(settlingTime);
  feedDueSoon(platform(), *hosted_.menulet);
  ::malloc_trim(0);  // what many bills took is not needed until the next change
}

/// The status item stays through a change of region; only what is computed is made anew.
void Agent::followRegion() {
  Region region = surroundings_.region();
  if (hosted_.desktop && sameRegion(region, platform().region)) return;
  Hosted next;
  next.desktop = std::make_unique<programs::DesktopPlatform>(surroundings_.folders, std::move(region), clock_, log_,
                                                             workspace_, statusBar_, *this);
  next.menulet = std::make_unique<QMHelperMenulet>(next.desktop->platform());
  if (hosted_.menulet) {
    next.menulet->theMenu = hosted_.menulet->theMenu;
    next.menulet->statusItem = hosted_.menulet->statusItem;
    next.menulet->menuIcon = hosted_.menulet->menuIcon;
  }
  if (hosted_.desktop) mail_.endRequests();
  hosted_ = std::move(next);
  mail_.follow(*hosted_.desktop);
}

/// The group suite is not watched: listing bills writes it.
void Agent::watchFiles() {
  const std::string& settings = hosted_.desktop->paths().settings;
  const auto isNamed = [](std::string wanted) {
    return [wanted = std::move(wanted)](std::string_view name) { return name == wanted; };
  };
  std::vector<WatchedFolder> folders{
      {parentOf(settings), isNamed(nameOf(settings))},
      {"/etc", [](std::string_view name) { return name == "localtime" || name == "timezone"; }}};
  if (const auto data = QMBillsLoader{platform()}.tallyvaneDirectory()) folders.push_back({*data, isFileOfBills});
  fileWatch_.watch(folders);
}

void Agent::waitForMidnight() {
  const Calendar& calendar = Calendar::of(platform().region);
  const auto nextMidnight = [&] { return calendar.startOfDay(addDays(calendar.civilDay(platform().clock.now()), 1)); };
  while (!midnight_.set(nextMidnight())) {
  }
}

}  // namespace tallyvane::agent
