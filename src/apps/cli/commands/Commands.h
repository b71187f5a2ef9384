// The commands, one file each. Every function adds its command to the command line; parsing that command notes what is
// to be run.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "cli/Session.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

/// What the arguments ask for.
struct Invocation {
  bool json = false;
  bool verbose = false;
  std::function<void(Session&)> action;  ///< unset when no command was given
};

void addOverview(CLI::App& app, Invocation& invocation);
void addShow(CLI::App& app, Invocation& invocation);
void addAdd(CLI::App& app, Invocation& invocation);
void addEdit(CLI::App& app, Invocation& invocation);
void addArchive(CLI::App& app, Invocation& invocation);
void addRestore(CLI::App& app, Invocation& invocation);
void addDelete(CLI::App& app, Invocation& invocation);
void addDeleteAll(CLI::App& app, Invocation& invocation);
void addPay(CLI::App& app, Invocation& invocation);
void addUndo(CLI::App& app, Invocation& invocation);
void addPayments(CLI::App& app, Invocation& invocation);
void addAutopay(CLI::App& app, Invocation& invocation);
void addStats(CLI::App& app, Invocation& invocation);
void addGraph(CLI::App& app, Invocation& invocation);
void addPaid(CLI::App& app, Invocation& invocation);
void addIncome(CLI::App& app, Invocation& invocation);
void addTags(CLI::App& app, Invocation& invocation);
void addIcons(CLI::App& app, Invocation& invocation);
void addRepeat(CLI::App& app, Invocation& invocation);
void addSettings(CLI::App& app, Invocation& invocation);
void addImport(CLI::App& app, Invocation& invocation);
void addBackup(CLI::App& app, Invocation& invocation);
void addRestoreBackup(CLI::App& app, Invocation& invocation);
void addLocation(CLI::App& app, Invocation& invocation);
void addMenu(CLI::App& app, Invocation& invocation);
void addWidget(CLI::App& app, Invocation& invocation);
void addMail(CLI::App& app, Invocation& invocation);
void addRemind(CLI::App& app, Invocation& invocation);
void addNotifications(CLI::App& app, Invocation& invocation);
void addCalendar(CLI::App& app, Invocation& invocation);
void addCheck(CLI::App& app, Invocation& invocation);
void addExport(CLI::App& app, Invocation& invocation);
void addTour(CLI::App& app, Invocation& invocation);
void addDoctor(CLI::App& app, Invocation& invocation);
/// Hidden: what the shells' completions ask.
void addComplete(CLI::App& app, Invocation& invocation);

/// What a program without a command does: the overview of the active bills or, for a person without any, a welcome.
void runDefaultOverview(Session& session);

inline constexpr const char* billHelp = marked("The bill's name, the beginning of its name, or its identifier");

/// Texts that every command has. Descriptions of commands and options are English here and shown in the user's
/// language.
struct CommandTexts {
  std::string name;
  std::string description;
  std::string example;  ///< a command line as one would type it
};

/// Adds a command with its --json flag and its example.
CLI::App* addCommand(CLI::App& parent, Invocation& invocation, const CommandTexts& texts,
                     std::function<void(Session&)> action);

}  // namespace tallyvane::cli
