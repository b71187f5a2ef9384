#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/Failure.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/Fields.h"
#include "common/Sentences.h"
#include "freedesktop/InstalledResources.h"
#include "freedesktop/Interrupts.h"
#include "freedesktop/Spawn.h"

namespace tallyvane::cli {

namespace {

/// What is said before a command, which is then run as if it had been typed.
struct Step {
  const char* text;
  std::vector<std::string> arguments;
};

const Step steps[] = {
    {marked("A bill has a name, a due date, a rule by which it repeats, and an amount. This one reminds you three days "
            "before it is due:"),
     {"add", "Rent", "--due", "+4d", "--repeat", "monthly", "--amount", "900", "--remind", "3"}},
    {marked("Dates and rules are typed as they are said:"),
     {"add", "Electricity", "--due", "tomorrow", "--repeat", "every 2 months", "--amount", "84"}},
    {marked("The overview shows what is due, and when:"), {"overview"}},
    {marked("Paying a bill logs the payment and moves the bill to its next due date. The beginning of its name is "
            "enough:"),
     {"pay", "elec", "--amount", "91"}},
    {marked("Reminders wait until you ask for them. This switches notifications on:"),
     {"settings", "set", "QMEnableNotificationCenter", "yes"}},
    {marked("And this shows when you would be reminded, and where:"), {"remind", "--dry-run"}}};

/// A home of its own for the commands of the tour; gone with it, and the user's own is not touched.
class ThrowawayHome {
 public:
  ThrowawayHome() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tallyvane-tour-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
      couldNot(sentence("There is no place for the tour: {}.", pattern.substr(0, pattern.rfind('/'))));
    path_ = pattern;
  }
  ~ThrowawayHome() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ThrowawayHome(const ThrowawayHome&) = delete;
  ThrowawayHome& operator=(const ThrowawayHome&) = delete;

  /// This process's environment with the folders of this home.
  [[nodiscard]] std::vector<std::string> variables() const {
    std::vector<std::string> all{"XDG_DATA_HOME=" + path_ + "/share", "XDG_CONFIG_HOME=" + path_ + "/config",
                                 "XDG_STATE_HOME=" + path_ + "/state"};
    for (char** variable = environ; *variable != nullptr; ++variable) {
      const std::string_view text(*variable);
      const bool isReplaced = text.starts_with("XDG_DATA_HOME=") || text.starts_with("XDG_CONFIG_HOME=") ||
                              text.starts_with("XDG_STATE_HOME=");
      if (!isReplaced) all.emplace_back(text);
    }
    return all;
  }

 private:
  std::string path_;
};

std::string asTyped(const std::vector<std::string>& arguments) {
  std::string line = "$ tallyvane";
  for (const std::string& argument : arguments)
    line += argument.find(' ') == std::string::npos ? " " + argument : " '" + argument + "'";
  return line;
}

bool goesOn(const Console& console) {
  if (Interrupts::came()) return false;
  if (!console.canAsk() || !console.interactive()) return true;
  const auto answer = console.answer(translated("Enter goes on, q ends the tour."));
  return answer && *answer != "q" && !Interrupts::came();
}

void take(Console& console, const Step& step, const ThrowawayHome& home) {
  console.line();
  printParagraph(console, translated(step.text));
  console.line(console.painted(asTyped(step.arguments), Colour::bold));
  if (!console.flushed()) couldNot(translated("The output could not be written."));
  std::vector<std::string> command{ownExecutable()};
  command.insert(command.end(), step.arguments.begin(), step.arguments.end());
  const Result<int> status = runAttached(command, home.variables());
  if (!status) couldNot(sentence("The tour ends here: {}.", status.error()));
  if (*status != 0 && !Interrupts::came()) couldNot(sentence("The tour ends here: {}.", asTyped(step.arguments)));
}

void guide(Session& session) {
  if (session.json) wrongUsage(translated("The tour is for people: it has no JSON."));
  Console& console = session.console;
  const Interrupts interrupts;  // ends after the home is gone
  const ThrowawayHome home;
  printParagraph(console, translated("A short tour with made-up bills. They lie in a folder of their own that is gone "
                                     "afterwards; yours stay as they "
                                     "are."));
  for (const Step& step : steps) {
    if (&step != std::begin(steps) && !goesOn(console)) return;
    take(console, step, home);
  }
  console.line();
  printParagraph(
      console, sentence("That was the tour. Now add your first bill; \"{}\" lists all commands, and \"{}\" tells what "
                        "works on this desktop.",
                        "tallyvane --help", "tallyvane doctor"));
}

}  // namespace

void addTour(CLI::App& app, Invocation& invocation) {
  addCommand(app, invocation,
             {"tour", marked("Show in a few steps how bills are added, paid and reminded of"), "tallyvane tour"},
             guide);
}

}  // namespace tallyvane::cli
