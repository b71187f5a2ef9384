#include <fmt/format.h>

#include <memory>

#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/NextDueDates.h"
#include "cli/input/RepeatInput.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

constexpr std::int64_t mostDates = 1000;

struct Options {
  std::string rule;
  std::string from = "today";
  std::string count = "5";
};

void printRepeatJson(Session& session, const std::string& sentence, Date from, const std::vector<Date>& dates) {
  Json days = Json::array();
  for (const Date date : dates) days.push_back(isoDay(session.platform, date));
  printJson(session.console, {{"repeats", sentence}, {"from", isoDay(session.platform, from)}, {"dates", days}});
}

void showRepeat(Session& session, const Options& options) {
  const Platform& platform = session.platform;
  const Array rule = understood(readRepeat(options.rule));
  const Date from = understood(readDueDate(platform.region, platform.clock.now(), options.from));
  const auto count = static_cast<std::size_t>(countInput("--count", options.count, 1, mostDates));
  const std::vector<Date> dates = nextDueDates(platform, from, rule, count);

  const QMBillsLoader loader{platform};
  const std::string sentence = loader.createHumanRepeatWithArray(&rule).value_or(std::string());
  if (session.json) return printRepeatJson(session, sentence, from, dates);
  session.console.line(printable(sentence));
  for (const Date date : dates) {
    session.console.line(session.console.interactive() ? printable(loader.createDueDateStringWithDate(date))
                                                       : isoDay(platform, date));
  }
}

}  // namespace

void addRepeat(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"repeat", marked("Say a repeat rule in words, and the dates that follow"),
                                  "tallyvane repeat \"every 2 weeks\" --from 2027-03-01 --count 10"},
                                 [options](Session& session) { showRepeat(session, *options); });
  command->add_option("RULE", options->rule, "monthly, \"every 2 weeks\", quarterly, \"twice a month\", never")
      ->required();
  command->add_option("--from", options->from, "The due date from which to count; today when not given");
  command->add_option("--count", options->count, "How many dates; 5 when not given");
}

}  // namespace tallyvane::cli
