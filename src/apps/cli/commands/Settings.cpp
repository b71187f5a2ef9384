#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/commands/Commands.h"
#include "cli/settings/SettingValue.h"
#include "cli/terminal/DisplayText.h"
#include "common/DataFolderState.h"
#include "common/Sentences.h"
#include "storage/Keys.h"
#include "storage/Settings.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string key;
  std::string value;
};

Json described(const Platform& platform, const Setting& setting) {
  return {{"key", setting.key},
          {"value", settingJson(platform, setting, platform.defaults.object(setting.key))},
          {"kind", kindText(setting)},
          {"meaning", setting.meaning}};
}

/// Key and value, and under them what the setting means.
void printForPeople(Console& console, const Setting& setting, const std::string& value) {
  const int width = console.terminal().width;
  console.line(fitted(std::string(setting.key) + ": " + printable(value), width));
  for (const std::string& line : wrapped(translated(setting.meaning), width - 4)) {
    console.line("    " + console.painted(line, Colour::dim));
  }
}

void listSettings(Session& session) {
  const Platform& platform = session.platform;
  Json list = Json::array();
  for (const Setting& setting : settingsCatalogue()) {
    const std::string value = settingText(platform, setting, platform.defaults.object(setting.key));
    if (session.json) {
      list.push_back(described(platform, setting));
    } else if (session.console.interactive()) {
      printForPeople(session.console, setting, value);
    } else {
      session.console.line(fmt::format("{}\t{}\t{}", setting.key, printable(value), setting.meaning));
    }
  }
  if (session.json) printJson(session.console, list);
}

void getSetting(Session& session, const Options& options) {
  const Setting& setting = findSetting(options.key);
  if (session.json) return printJson(session.console, described(session.platform, setting));
  const std::optional<Value> value = session.platform.defaults.object(setting.key);
  session.console.line(printable(settingText(session.platform, setting, value)));
}

void requireStored(const Result<>& stored) {
  if (!stored) couldNot(sentence("The setting was not changed: {}.", stored.error()));
}

/// Switching the custom location on without a folder would leave the programs with no data folder at all.
void requireCustomFolder(const Platform& platform) {
  const auto found = settingOf<std::string>(platform.defaults, key::CustomLocationTempPath);
  if ((found && !found->empty()) || platform.defaults.object(key::CustomLocationBookmark)) return;
  couldNot(sentence("Name the folder first: {}", "tallyvane settings set QMCustomLocationBookmark FOLDER"));
}

/// While the data folder moves, its place is decided by the move.
void requireNoMove(const Platform& platform, std::string_view key) {
  constexpr std::array places{key::CustomLocationEnabled, key::CustomLocationBookmark, key::CustomLocationTempPath,
                              key::DropboxSyncEnabled};
  if (std::find(places.begin(), places.end(), key) == places.end()) return;
  if (const auto unfinished = programs::unfinishedChange(platform)) couldNot(*unfinished);
}

void requireFolderUnused(const Platform& platform, std::string_view forgottenKey) {
  if (forgottenKey != key::CustomLocationBookmark) return;
  if (!boolSetting(platform.defaults, key::CustomLocationEnabled)) return;
  couldNot(sentence("Your bills are in this folder. Switch it off first: {}",
                    "tallyvane settings set QMCustomLocationEnabled no"));
}

/// The data folder was found under the old settings; an empty path makes the model look again. Done before the change,
/// which may fail: looking again under the old settings finds the old folder.
void forgetFoundFolder(const Platform& platform, std::string_view changedKey) {
  const bool moves = changedKey == key::CustomLocationEnabled || changedKey == key::CustomLocationBookmark ||
                     changedKey == key::DropboxSyncEnabled;
  const bool hasFolder =
      changedKey == key::CustomLocationBookmark || platform.defaults.object(key::CustomLocationBookmark).has_value();
  if (!moves || !hasFolder) return;
  requireStored(platform.defaults.set(key::CustomLocationTempPath, ""));
}

void setSetting(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Setting& setting = findSetting(options.key);
  const Value value = settingInput(platform, setting, options.value);
  session.write([&] {
    requireNoMove(platform, setting.key);
    if (setting.key == key::CustomLocationEnabled && value == Value(true)) requireCustomFolder(platform);
    forgetFoundFolder(platform, setting.key);
    requireStored(platform.defaults.set(setting.key, value));
  });
  getSetting(session, options);
}

void unsetSetting(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Setting& setting = findSetting(options.key);
  session.write([&] {
    requireNoMove(platform, setting.key);
    requireFolderUnused(platform, setting.key);
    forgetFoundFolder(platform, setting.key);
    // In use, an absent path stands for a folder that cannot be told; an empty one is looked for again.
    const bool isLookedForAgain =
        setting.key == key::CustomLocationTempPath && boolSetting(platform.defaults, key::CustomLocationEnabled);
    requireStored(isLookedForAgain ? platform.defaults.set(setting.key, "") : platform.defaults.remove(setting.key));
  });
  getSetting(session, options);
}

void addSubcommand(CLI::App& settings, Invocation& invocation, const CommandTexts& texts, bool takesValue,
                   void (*run)(Session&, const Options&)) {
  auto options = std::make_shared<Options>();
  CLI::App* command =
      addCommand(settings, invocation, texts, [options, run](Session& session) { run(session, *options); });
  command->add_option("KEY", options->key, "The setting's key")->required();
  if (takesValue) command->add_option("VALUE", options->value, "Its new value")->required();
}

}  // namespace

void addSettings(CLI::App& app, Invocation& invocation) {
  CLI::App* settings = addCommand(
      app, invocation,
      {"settings", marked("List the settings and what they mean, or change one"), "tallyvane settings"}, nullptr);
  settings->callback([&invocation, settings] {
    if (settings->get_subcommands().empty()) invocation.action = listSettings;
  });
  settings->require_subcommand(0, 1);
  addSubcommand(*settings, invocation, {"get", marked("Print one setting"), "tallyvane settings get QMDueSoonDays"},
                false, getSetting);
  addSubcommand(*settings, invocation,
                {"set", marked("Change one setting"), "tallyvane settings set QMReminderTime 09:30"}, true, setSetting);
  addSubcommand(*settings, invocation,
                {"unset", marked("Go back to a setting's first value"), "tallyvane settings unset QMDueSoonDays"},
                false, unsetSetting);
}

}  // namespace tallyvane::cli
