#include "cli/IncomeSource.h"

#include <algorithm>

#include "analysis/QMIncomeManager.h"
#include "cli/Failure.h"
#include "cli/bills/BillText.h"
#include "cli/input/AmountInput.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/InputText.h"
#include "cli/input/Similar.h"
#include "cli/input/TextInput.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

constexpr std::int64_t lastDayIndex = 28;

/// The ways to say each code; the first is the one that is shown.
struct RepeatWords {
  std::int64_t code;
  std::vector<std::string_view> words;
};

const std::vector<RepeatWords>& repeatWords() {
  static const std::vector<RepeatWords> all{
      // translators: how often income comes, in a table
      {0, {marked("once")}},
      {1, {marked("monthly"), "every month"}},
      {2, {marked("every 2 weeks"), "every two weeks", "biweekly", "fortnightly"}},
      {3, {marked("weekly"), "every week"}}};
  return all;
}

bool paysByDay(std::int64_t code) { return code <= 1; }

std::int64_t repeatInput(const std::string& text) {
  const std::string plain = plainText(text);
  for (const auto& [code, words] : repeatWords()) {
    if (std::find(words.begin(), words.end(), plain) != words.end()) return code;
  }
  wrongUsage(
      // translators: what is to be written is English: once, monthly, "every 2 weeks" and weekly stay
      sentence("\"{}\" is no way for income to repeat; write once, monthly, \"every 2 weeks\" or weekly.", text));
}

/// The day index that the file keeps.
std::int64_t dayInput(const std::string& text) {
  const std::string plain = plainText(text);
  if (plain == "last") return lastDayIndex;
  const auto day = wholeNumber(plain);
  if (!day || *day < 1 || *day > lastDayIndex)
    wrongUsage(sentence("--day must be a whole number from {} to {}, or last, not \"{}\".", 1, lastDayIndex, text));
  return *day - 1;
}

/// The pay dates of about three years from the first in this month: the model drops those of a source that has none in
/// it.
Array datesInput(const Platform& platform, std::int64_t code, const std::string& from) {
  const QMIncomeManager manager{platform};
  const Calendar& calendar = Calendar::of(platform.region);
  const Date date = understood(readDueDate(platform.region, platform.clock.now(), from));
  const CivilDay first = calendar.civilDay(manager.dateFromDateIndex(0));
  const std::int64_t step = code == 3 ? 7 : 14;
  std::int64_t index = (calendar.civilDay(date) - first).count();
  if (index < 0) index = (index % step + step) % step;
  if (index >= manager.lastDayOfMonth())
    wrongUsage(sentence("\"{}\" is after this month; give a pay date of this month or before it.", from));
  return manager.createArrayOfIncomeDatesForIntervalFromDate(code, index);
}

void applyDay(const Platform& platform, const IncomeOptions& options, bool isNew, Dictionary& source) {
  if (options.from) wrongUsage(translated("--from is for weekly and \"every 2 weeks\"; once and monthly take --day."));
  if (!options.day && !source.contains(key::PayDate))
    wrongUsage(translated("Say on which day of the month it comes: --day 1 to 28, or --day last."));
  if (options.day) source.set(key::PayDate, dayInput(*options.day));
  source.erase(key::IncomeDates);
  // What comes once comes in the month of its creation: a changed one in this.
  if (isNew || !source.contains(key::CreationDate)) source.set(key::CreationDate, platform.clock.now());
}

void applyDates(const Platform& platform, const IncomeOptions& options, bool isNew, std::int64_t code,
                Dictionary& source) {
  if (options.day) wrongUsage(translated("--day is for once and monthly; weekly and \"every 2 weeks\" take --from."));
  if (!options.from && isNew) wrongUsage(translated("Say on which date it comes, or came: --from DATE."));
  if (options.from) source.set(key::IncomeDates, datesInput(platform, code, *options.from));
  source.erase(key::PayDate);
  if (!source.contains(key::CreationDate)) source.set(key::CreationDate, platform.clock.now());
}

}  // namespace

void addIncomeOptions(CLI::App& command, IncomeOptions& options) {
  command.add_option("--amount", options.amount, "What comes each time")->type_name("N");
  command.add_option("--repeat", options.repeat, "once, monthly, \"every 2 weeks\" or weekly")->type_name("RULE");
  command.add_option("--day", options.day, "Once and monthly: the day of the month, 1 to 28 or last")->type_name("DAY");
  command
      .add_option("--from", options.from, "Weekly and every 2 weeks: a date of this month or before, on which it pays")
      ->type_name("DATE");
}

void apply(const Platform& platform, const IncomeOptions& options, Dictionary& source) {
  if (options.name) source.set(key::Name, nameInput(*options.name, translated("The name must not be empty.")));
  if (options.amount) source.set(key::Amount, understood(readAmount(platform.region, *options.amount)));
  if (!options.repeat && !options.day && !options.from) return;
  const std::int64_t before = integerValue(source, key::Repeat);
  const std::int64_t code = options.repeat ? repeatInput(*options.repeat) : before;
  const bool isNew = !source.contains(key::Repeat) || code != before;
  source.set(key::Repeat, code);
  if (paysByDay(code)) {
    applyDay(platform, options, isNew, source);
  } else {
    applyDates(platform, options, isNew, code, source);
  }
}

std::size_t findSource(const Array& sources, const std::string& text) {
  const std::string plain = folded(text);
  std::vector<std::size_t> found;
  for (const bool wholly : {true, false}) {
    for (std::size_t i = 0; i < sources.size() && !plain.empty(); ++i) {
      const std::string name = folded(nameOf(sources[i]));
      if (wholly ? name == plain : name.starts_with(plain)) found.push_back(i);
    }
    if (found.size() == 1) return found.front();
    if (!found.empty())
      couldNot(countedSentence(found.size(), "\"{}\" fits {} source of income. Give its number.",
                               "\"{}\" fits {} sources of income. Give its number.", text, found.size()));
  }
  const auto number = wholeNumber(text);
  if (number && *number >= 1 && static_cast<std::size_t>(*number) <= sources.size())
    return static_cast<std::size_t>(*number) - 1;
  couldNot(sentence("There is no source of income \"{}\".", text) + " " + sentence("See: {}", "tallyvane income"));
}

std::string nameOf(const Value& source) {
  const auto* dictionary = source.get<Dictionary>();
  return dictionary == nullptr ? std::string() : dictionary->valueOr(key::Name, std::string());
}

std::string repeatWord(const Dictionary& source) {
  const auto code = incomeIntervalCode(source);
  if (!code) return marked("cannot be read");
  for (const auto& [known, words] : repeatWords())
    if (known == *code) return std::string(words.front());
  return marked("never");
}

Cell payDayCell(const Platform& platform, const Dictionary& source) {
  const std::string shown = QMIncomeManager{platform}.displayDateWithIncome(source);
  if (shown.empty()) return {"", ""};
  if (!paysByDay(int32Value(source, key::Repeat))) {
    const Array* dates = source.get<Array>(key::IncomeDates);
    const Date* next = dates == nullptr || dates->empty() ? nullptr : dates->front().get<Date>();
    return next == nullptr ? Cell(translated("no dates left"), "") : Cell(shown, isoDay(platform, *next));
  }
  const std::int64_t index = int32Value(source, key::PayDate);
  return {shown, index == lastDayIndex ? "last" : std::to_string(index + 1)};
}

Json incomeJson(const Platform& platform, std::size_t number, const Value& source) {
  const auto* dictionary = source.get<Dictionary>();
  if (dictionary == nullptr) return {{"number", number}, {"readable", false}};
  Json dates = Json::array();
  const Array* list = dictionary->get<Array>(key::IncomeDates);
  for (const Value& each : list == nullptr ? Array() : *list)
    if (const Date* date = each.get<Date>()) dates.push_back(isoDay(platform, *date));
  return {{"number", number},
          {"readable", true},
          {"name", nameOf(source)},
          {"amount", doubleValue(*dictionary, key::Amount)},
          {"repeat", repeatWord(*dictionary)},
          {"payDay", payDayCell(platform, *dictionary).plain},
          {"dates", dates}};
}

}  // namespace tallyvane::cli
