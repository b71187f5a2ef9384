#include "cli/CallbackWait.h"
#include "cli/CommandLine.h"
#include "cli/NoticeLog.h"
#include "common/DesktopPlatform.h"
#include "common/ProgramLock.h"
#include "common/Sentences.h"
#include "freedesktop/Gettext.h"
#include "freedesktop/HeldSignals.h"
#include "freedesktop/SoundTheme.h"
#include "freedesktop/SystemClock.h"
#include "freedesktop/SystemLog.h"
#include "freedesktop/SystemRegion.h"

namespace tallyvane::cli {

namespace {

/// A command opens nothing in the session.
class NoWorkspace : public Workspace {
 public:
  [[nodiscard]] std::vector<std::string> runningApplications() override { return {}; }
  Result<> openUrl(const std::string& url) override { return Error{url + ": not opened by the command line"}; }
};

Result<programs::ProgramLock> takeLock(FileStore& files, const std::string& path, Console& console) {
  return programs::ProgramLock::take(
      files, path, [&console] { console.error(translated("Waiting for another Tallyvane program to finish.")); });
}

/// An operation that writes several files, and which no signal ends between two of them.
struct Undisturbed {
  explicit Undisturbed(programs::ProgramLock taken) : lock(std::move(taken)) {}
  programs::ProgramLock lock;
  DeferredSignals signals;
};

template <typename Held>
Result<std::shared_ptr<const void>> shared(Result<programs::ProgramLock> lock) {
  if (!lock) return Error{lock.error()};
  return std::shared_ptr<const void>(std::make_shared<Held>(std::move(*lock)));
}

ExitStatus runOnDesktop(const Invocation& invocation, Console& console) {
  SystemLog systemLog("tallyvane", invocation.verbose);
  NoticeLog noticeLog(systemLog, console);
  Log& log = invocation.verbose ? static_cast<Log&>(systemLog) : noticeLog;
  SystemClock clock;
  NoWorkspace workspace;
  NoStatusBar statusBar;
  NoApplication application;
  programs::DesktopPlatform desktop(XdgFolders::of(processEnvironment()), systemRegion(log), clock, log, workspace,
                                    statusBar, application);
  CallbackWait callbacks(desktop.mainQueue());
  const programs::ProgramPaths& paths = desktop.paths();
  const auto take = [&](const std::string& path) { return takeLock(desktop.files(), path, console); };
  Session session(
      desktop.platform(), console, {desktop.files(), [&] { return shared<Undisturbed>(take(paths.lock)); }},
      {[&] { callbacks.holdSignals(); }, [&] { return callbacks.wait(); }, [&] { desktop.mainQueue().runPending(); },
       [&] { desktop.endRequests(); }, [&] { return shared<programs::ProgramLock>(take(paths.mailTurn)); },
       paths.mailRound},
      [](const std::string& name) { playThemeSound(SessionEnvironment::of(processEnvironment()), name); },
      invocation.json);
  return runCommand(invocation, session);
}

ExitStatus run(int count, char** arguments) {
  useLanguage(systemLocale(), catalogueFolder(ownExecutable()));
  Console console = standardConsole();
  auto parsed = parseCommandLine({arguments + std::min(count, 1), arguments + count}, console);
  if (const ExitStatus* ended = std::get_if<ExitStatus>(&parsed)) return *ended;
  try {
    return runOnDesktop(std::get<Invocation>(parsed), console);
  } catch (const std::exception& error) {
    console.error(sentence("Tallyvane cannot start here: {}", error.what()));
    return ExitStatus::couldNot;
  }
}

}  // namespace

}  // namespace tallyvane::cli

int main(int count, char** arguments) { return static_cast<int>(tallyvane::cli::run(count, arguments)); }
