#include <algorithm>
#include <memory>

#include "analysis/QMIncomeManager.h"
#include "cli/Failure.h"
#include "cli/IncomeSource.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/commands/Commands.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Fields.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string source;
  IncomeOptions fields;
};

/// Every reading writes the file anew: one that is there but cannot be read is left for the person to mend.
void requireReadableIncome(const Platform& platform) {
  requireReadableData(platform);
  const std::string path = pathInDataFolder(platform, incomeIndexName);
  requireReadableFile(platform, path,
                      marked("The income file: {}. Put back a good copy of this file, or move it away."));
  const auto content = readPropertyListFile<Dictionary>(platform.files, platform.log, path);
  if (!content || !content->contains(key::IncomeSources) || content->get<Array>(key::IncomeSources)) return;
  couldNot(sentence(
      "The income file: {}: \"IncomeSources\" is not a list. Put back a good copy of this file, or move it away.",
      path));
}

/// Runs an operation of the model on the income file, which it may prune.
template <typename Operation>
auto onIncome(Session& session, Operation operation) {
  decltype(operation(std::declval<QMIncomeManager&>())) result{};
  session.write([&] {
    requireReadableIncome(session.platform);
    QMIncomeManager manager{session.platform};
    result = operation(manager);
  });
  return result;
}

void listIncome(Session& session) {
  const Platform& platform = session.platform;
  const Array sources = onIncome(session, [](QMIncomeManager& manager) { return manager.getIncomeSources(); });
  Table table({{"#", true},
               {marked("Income"), false, 16, 0},
               {marked("Amount"), true},
               {marked("Repeats"), false, 0, 2},
               {marked("Pay day"), false, 0, 1}});
  Json json = Json::array();
  for (std::size_t i = 0; i < sources.size(); ++i) {
    json.push_back(incomeJson(platform, i + 1, sources[i]));
    if (const auto* source = sources[i].get<Dictionary>()) {
      table.add({std::to_string(i + 1), nameOf(sources[i]), amountCell(platform, source->find(key::Amount)),
                 wordCell(repeatWord(*source)), payDayCell(platform, *source)});
    } else {
      table.add({std::to_string(i + 1), wordCell(marked("cannot be read")), "", "", ""});
    }
  }
  if (session.json) return printJson(session.console, json);
  if (!sources.empty()) return table.print(session.console);
  if (!session.console.interactive()) return;
  session.console.line(translated("There is no income yet."));
  session.console.line(
      sentence("Add some: {}", "tallyvane income add Salary --amount 2800 --repeat monthly --day last"));
}

/// Changes the stored list, and gives the place of the source of which there is something to say.
template <typename Change>
std::pair<std::size_t, Array> changeIncome(Session& session, Change change) {
  return onIncome(session, [&](QMIncomeManager& manager) {
    Array sources = manager.getIncomeSources();
    const std::size_t at = change(sources);
    manager.writeUpdatedIncomeArray(sources);
    return std::pair(at, sources);
  });
}

/// The sentence is without its end.
void sayChanged(Session& session, fmt::format_string<const std::string&> done, std::size_t at, const Value& source) {
  const Platform& platform = session.platform;
  if (session.json) return printJson(session.console, incomeJson(platform, at + 1, source));
  const auto* fields = source.get<Dictionary>();
  if (fields == nullptr) return;
  const std::string name = nameOf(source);
  const std::string amount = amountCell(platform, fields->find(key::Amount)).shown;
  const std::string how = translated(repeatWord(*fields));
  const std::string day = payDayCell(platform, *fields).shown;
  const std::string what = sentence(done, name);
  // translators: what was done, an amount, how often and when it comes: Added "Salary": $2,800.00 monthly, last day.
  const std::string said = sentence("{}: {} {}, {}.", what, amount, how, day);
  session.console.line(printable(said));
}

void addSource(Session& session, const Options& options) {
  const auto [at, sources] = changeIncome(session, [&](Array& list) {
    Dictionary source;
    apply(session.platform, options.fields, source);
    list.emplace_back(std::move(source));
    return list.size() - 1;
  });
  sayChanged(session, marked("Added \"{}\""), at, sources.at(at));
}

void editSource(Session& session, const Options& options) {
  const IncomeOptions& fields = options.fields;
  if (!fields.name && !fields.amount && !fields.repeat && !fields.day && !fields.from)
    wrongUsage(translated("Say what to change: --name, --amount, --repeat, --day or --from.") + " " +
               sentence("See: {}", "tallyvane income edit --help"));
  const auto [at, sources] = changeIncome(session, [&](Array& list) {
    const std::size_t index = findSource(list, options.source);
    auto* source = list[index].get<Dictionary>();
    if (source == nullptr) couldNot(translated("That entry cannot be read; it can only be removed."));
    apply(session.platform, fields, *source);
    return index;
  });
  sayChanged(session, marked("Changed \"{}\""), at, sources.at(at));
}

void removeSource(Session& session, const Options& options) {
  Value removed = Dictionary();
  const auto [at, sources] = changeIncome(session, [&](Array& list) {
    const std::size_t index = findSource(list, options.source);
    removed = list[index];
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
    return index;
  });
  if (session.json) return printJson(session.console, incomeJson(session.platform, at + 1, removed));
  session.console.line(printable(sentence("Removed \"{}\".", nameOf(removed))));
}

void showThisMonth(Session& session) {
  struct Sums {
    float soFar = 0, whole = 0;
  };
  const Sums sums = onIncome(session, [](QMIncomeManager& manager) {
    return Sums{manager.incomeThisMonth(), manager.incomeThisMonthAll()};
  });
  if (session.json)
    return printJson(session.console, {{"received", floatJson(sums.soFar)}, {"wholeMonth", floatJson(sums.whole)}});
  const Value soFar = sums.soFar;
  const Value whole = sums.whole;
  printFields(session.console, {{marked("Received so far"), amountCell(session.platform, &soFar)},
                                {marked("Whole month"), amountCell(session.platform, &whole)}});
}

void showDates(Session& session) {
  const Platform& platform = session.platform;
  auto dates = onIncome(session, [](QMIncomeManager& manager) { return manager.incomeDatesThisMonth(); });
  std::sort(dates.begin(), dates.end());
  Json json = Json::array();
  for (const Date date : dates) {
    json.push_back(isoDay(platform, date));
    if (session.json) continue;
    session.console.line(session.console.interactive() ? QMBillsLoader{platform}.createDueDateStringWithDate(date)
                                                       : isoDay(platform, date));
  }
  if (session.json) return printJson(session.console, json);
  if (dates.empty() && session.console.interactive())
    session.console.line(translated("No income comes this month or the next."));
}

CLI::App* addChange(CLI::App& income, Invocation& invocation, const CommandTexts& texts,
                    const std::shared_ptr<Options>& options, void (*run)(Session&, const Options&)) {
  return addCommand(income, invocation, texts, [options, run](Session& session) { run(session, *options); });
}

void addChanges(CLI::App& income, Invocation& invocation) {
  constexpr const char* sourceHelp = marked("The source's name, the beginning of its name, or its number");
  auto options = std::make_shared<Options>();
  CLI::App* add = addChange(income, invocation,
                            {"add", marked("Add a source of income"),
                             "tallyvane income add Salary --amount 2800 --repeat monthly --day last"},
                            options, addSource);
  add->add_option("NAME", options->fields.name, "What it is called")->required();
  addIncomeOptions(*add, options->fields);
  add->get_option("--amount")->required();
  add->get_option("--repeat")->required();

  options = std::make_shared<Options>();
  CLI::App* edit = addChange(
      income, invocation, {"edit", marked("Change a source of income"), "tallyvane income edit Salary --amount 2950"},
      options, editSource);
  edit->add_option("SOURCE", options->source, sourceHelp)->required();
  edit->add_option("--name", options->fields.name, "Its new name")->type_name("NAME");
  addIncomeOptions(*edit, options->fields);

  options = std::make_shared<Options>();
  CLI::App* remove =
      addChange(income, invocation, {"remove", marked("Remove a source of income"), "tallyvane income remove Salary"},
                options, removeSource);
  remove->add_option("SOURCE", options->source, sourceHelp)->required();
}

}  // namespace

void addIncome(CLI::App& app, Invocation& invocation) {
  CLI::App* income = addCommand(
      app, invocation,
      {"income", marked("List the money that comes in, or change what is known of it"), "tallyvane income"}, nullptr);
  income->callback([&invocation, income] {
    if (income->get_subcommands().empty()) invocation.action = listIncome;
  });
  income->require_subcommand(0, 1);
  addCommand(*income, invocation, {"list", marked("List the sources of income"), "tallyvane income list"}, listIncome);
  addChanges(*income, invocation);
  addCommand(*income, invocation,
             {"this-month", marked("Show what has come this month, and what comes in all of it"),
              "tallyvane income this-month"},
             showThisMonth);
  addCommand(*income, invocation,
             {"dates", marked("List the pay dates of this month and the next"), "tallyvane income dates"}, showDates);
}

}  // namespace tallyvane::cli
