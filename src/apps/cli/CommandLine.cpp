#include "cli/CommandLine.h"

#include <algorithm>
#include <cstdlib>
#include <exception>

#include "cli/Build.h"
#include "cli/ParseSentence.h"
#include "cli/input/Similar.h"
#include "common/Sentences.h"
#include "foundation/Texts.h"

namespace tallyvane::cli {

namespace {

void addCommands(CLI::App& app, Invocation& invocation) {
  for (const auto add : {addOverview,      addShow,     addAdd,   addEdit,     addArchive,       addRestore,  addDelete,
                         addDeleteAll,     addPay,      addUndo,  addPayments, addAutopay,       addStats,    addGraph,
                         addPaid,          addIncome,   addTags,  addIcons,    addRepeat,        addSettings, addImport,
                         addMenu,          addWidget,   addMail,  addRemind,   addNotifications, addCalendar, addBackup,
                         addRestoreBackup, addLocation, addCheck, addExport,   addTour,          addDoctor}) {
    add(app, invocation);
  }
  addComplete(app, invocation);
}

/// The words of the help itself; options show their values' kinds as the text beside them does.
void labelHelp(CLI::FormatterBase& formatter) {
  formatter.column_width(28);
  formatter.label("TEXT", "");
  formatter.label("REQUIRED", translated("(required)"));
  for (const char* word : {marked("Usage"), marked("Options"), marked("OPTIONS"), marked("Positionals"),
                           marked("Subcommands"), marked("SUBCOMMAND"), marked("Needs"), marked("Excludes")}) {
    formatter.label(word, translated(word));
  }
}

/// What was described in English, in the user's language.
void translate(CLI::App& app) {
  app.description(translated(app.get_description()));
  app.group(translated(app.get_group()));  // the heading above it in the help
  for (CLI::Option* option : app.get_options()) {
    option->description(translated(option->get_description()));
    option->group(translated(option->get_group()));
  }
  for (CLI::App* command : app.get_subcommands(nullptr)) translate(*command);
}

void describe(CLI::App& app, Invocation& invocation) {
  app.description(marked("Tallyvane keeps your recurring bills and tells which are due."));
  app.name("tallyvane");
  app.set_help_flag("-h,--help", marked("Print this help message and exit"));
  app.set_version_flag("--version", "tallyvane " TALLYVANE_VERSION " (build " TALLYVANE_BUILD ")",
                       marked("Print the version and the build"));
  app.fallthrough();  // the flags below may also stand after the command
  app.add_flag("--verbose", invocation.verbose, "Print what is logged on standard error");
  app.add_flag("--json", invocation.json, "Print JSON");
  app.footer(translated("Without a command: the overview.") + "\n" + translated("Example:") +
             "\n  tallyvane add Rent --due 2027-03-01 --repeat monthly --amount 900");
  labelHelp(*app.get_formatter());
  app.require_subcommand(0, 1);
  addCommands(app, invocation);
  translate(app);
}

void requireUtf8(const std::vector<std::string>& arguments) {
  const auto broken = std::find_if_not(arguments.begin(), arguments.end(), isValidUtf8);
  if (broken != arguments.end()) wrongUsage(sentence("The argument \"{}\" is not valid UTF-8.", *broken));
}

/// What is wrong with arguments that no command takes; with a first one that is no command, which was probably meant.
std::string unexpected(const CLI::App& app) {
  const std::vector<std::string> extras = app.remaining(true);
  const bool isCommandMissing = app.get_subcommands().empty() && !extras.empty() && !extras.front().starts_with('-');
  if (!isCommandMissing) return sentence("Not expected here: \"{}\".", extras.empty() ? "" : extras.front());
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands(nullptr)) names.push_back(command->get_name());
  const auto similar = nearest(extras.front(), names);
  return sentence("There is no command \"{}\".", extras.front()) +
         (similar ? " " + sentence("Did you mean \"{}\"?", *similar) : "");
}

/// The command whose help says what would have been right.
std::string helpCommand(const CLI::App& app) {
  std::string words = "tallyvane";
  for (auto chosen = app.get_subcommands(); !chosen.empty(); chosen = chosen.back()->get_subcommands()) {
    words += " " + chosen.back()->get_name();
  }
  return words + " --help";
}

void parse(CLI::App& app, std::vector<std::string> arguments, Console& console) {
  try {
    std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the end
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    console.text(app.help());
    throw;
  } catch (const CLI::CallForVersion& version) {
    console.line(version.what());
    throw;
  } catch (const CLI::ExtrasError&) {
    wrongUsage(unexpected(app) + " " + sentence("See: {}", helpCommand(app)));
  } catch (const CLI::ParseError& error) {
    wrongUsage(parseSentence(error) + ". " + sentence("See: {}", helpCommand(app)));
  }
}

ExitStatus failed(Console& console, const Failure& failure) {
  console.error(failure.what());
  return failure.status();
}

ExitStatus finished(Console& console) {
  if (console.flushed()) return ExitStatus::done;
  console.error(translated("The output could not be written."));
  return ExitStatus::couldNot;
}

}  // namespace

std::variant<Invocation, ExitStatus> parseCommandLine(const std::vector<std::string>& arguments, Console& console) {
  Invocation invocation;
  CLI::App app;
  try {
    requireUtf8(arguments);
    describe(app, invocation);
    parse(app, arguments, console);
    return invocation;
  } catch (const CLI::Success&) {
    return finished(console);
  } catch (const Failure& failure) {
    return failed(console, failure);
  }
}

ExitStatus runCommand(const Invocation& invocation, Session& session) {
  try {
    (invocation.action ? invocation.action : runDefaultOverview)(session);
    return finished(session.console);
  } catch (const Failure& failure) {
    return failed(session.console, failure);
  } catch (const std::exception& error) {
    session.console.error(sentence("Something went wrong: {}", error.what()));
    return ExitStatus::couldNot;
  }
}

}  // namespace tallyvane::cli
