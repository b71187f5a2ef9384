// A whole command line in memory: fakes of the desktop, and a console that tests read back.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "common/DesktopPlatform.h"
#include "support/Fakes.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

using nlohmann::json;
using Arguments = std::vector<std::string>;

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

/// Noon of Wednesday 10 March 2027 in New York, in English, with the programs' first values of the settings.
class CliDesktop {
 public:
  CliDesktop() {
    desktop.defaults.registerDefaults(programs::firstValues(desktop.region));
    (void)desktop.files.createFolder("/home/ada/.local/state/Tallyvane");
  }

  Outcome run(const Arguments& arguments) { return runOn(desktop.files, arguments); }

  Outcome runOn(FileStore& store, const Arguments& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    cli::Console console(out, err, terminal, asker);
    auto parsed = cli::parseCommandLine(arguments, console);
    const auto* ended = std::get_if<cli::ExitStatus>(&parsed);
    const cli::ExitStatus status =
        ended != nullptr ? *ended : runParsed(store, std::get<cli::Invocation>(parsed), console);
    return {static_cast<int>(status), out.str(), err.str()};
  }

  /// The identifiers under a key of the index.
  [[nodiscard]] std::vector<std::string> listed(std::string_view list) {
    const Value index = desktop.files.plist(dataFolder + "/billindex.plist");
    return stringsOf(index.is<Dictionary>() ? index.get<Dictionary>()->get<Array>(list) : nullptr);
  }
  [[nodiscard]] Dictionary bill(const std::string& bid) {
    const Value content = desktop.files.plist(dataFolder + "/" + bid + ".plist");
    return content.is<Dictionary>() ? *content.get<Dictionary>() : Dictionary();
  }
  /// "kind file key" of each finding of a check.
  [[nodiscard]] std::vector<std::string> findings() {
    const Outcome outcome = run({"check", "--json"});
    const json report = json::parse(outcome.out);
    std::vector<std::string> found;
    for (const json& finding : report.at("findings")) {
      const auto text = [&](const char* key) { return finding.at(key).get<std::string>(); };
      found.push_back(text("kind") + " " + text("file") + " " + text("key"));
    }
    EXPECT_EQ(outcome.status, found.empty() ? 0 : 1);
    return found;
  }
  [[nodiscard]] std::string currentFolder() { return json::parse(run({"location", "--json"}).out).at("folder"); }
  /// Names in the widget's snapshot.
  [[nodiscard]] std::vector<std::string> snapshot() {
    std::vector<std::string> names;
    const Array* rows = desktop.groupDefaults.content.get<Array>("ActiveBills");
    for (const Value& row : rows == nullptr ? Array() : *rows) {
      names.push_back(row.get<Dictionary>()->valueOr("Name", std::string()));
    }
    return names;
  }

  const std::string dataFolder = "/home/ada/.local/share/Tallyvane/Tallyvane.tvdata";
  FakeDesktop desktop;
  cli::Terminal terminal;
  cli::Console::Asker asker;
  bool locked = false;
  std::optional<std::string> lockFailure;
  int locksTaken = 0;
  std::vector<std::string> sounds;  ///< names played

 private:
  cli::ExitStatus runParsed(FileStore& store, const cli::Invocation& invocation, cli::Console& console) {
    programs::GuardedFileStore guarded(store, desktop.log);
    const Platform platform = desktop.over(guarded);
    cli::Session session(
        platform, console, {guarded, [this] { return lock(); }},
        {[] {},
         [this] {
           desktop.workQueue.run();
           return true;
         },
         [this] { desktop.mainQueue.run(); }, [this] { endRequests(); }, [this] { return lock(); },
         "/home/ada/.local/state/Tallyvane/mail.plist"},
        [this](const std::string& name) { sounds.push_back(name); }, invocation.json);
    return cli::runCommand(invocation, session);
  }
  void endRequests() {
    std::stop_source stopped;
    stopped.request_stop();
    desktop.workQueue.run(stopped.get_token());
    desktop.mainQueue.run();
  }
  Result<std::shared_ptr<const void>> lock() {
    if (lockFailure) return Error{*lockFailure};
    ++locksTaken;
    locked = true;
    return std::shared_ptr<const void>(this, [this](const void*) { locked = false; });
  }
};

}  // namespace tallyvane::testing
