#include "cli/input/DateNames.h"

#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>

#include <algorithm>
#include <memory>

#include "cli/input/InputText.h"
#include "foundation/IcuSupport.h"
#include "foundation/PerRegion.h"
#include "foundation/Texts.h"

namespace tallyvane::cli {

namespace {

using Symbols = icu::DateFormatSymbols;

// Adds the names of an ICU array whose element i has the number i + offset. The point of an abbreviation is left off,
// because not everybody types it.
void addNames(std::vector<NumberedName>& to, const icu::UnicodeString* names, int count, int offset) {
  for (int i = 0; i < count; ++i) {
    std::string name = plainText(utf8Of(names[i]));
    while (name.ends_with('.')) name.pop_back();
    if (!name.empty()) to.emplace_back(std::move(name), i + offset);
  }
}

std::unique_ptr<Symbols> makeSymbols(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Locale locale(region.locale.c_str());
  const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(locale, status));
  requireIcu(status, "a calendar");
  auto symbols = std::make_unique<Symbols>(locale, calendar->getType(), status);
  requireIcu(status, "the names of days and months");
  return symbols;
}

const Symbols& symbolsOf(const Region& region) { return perRegion<Symbols>(region, makeSymbols); }

template <typename Add>
void forEachForm(Add add) {
  for (const auto context : {Symbols::FORMAT, Symbols::STANDALONE})
    for (const auto width : {Symbols::WIDE, Symbols::ABBREVIATED}) add(context, width);
}

// Each name and its first three letters.
void addWithShortForms(std::vector<NumberedName>& to, std::initializer_list<const char*> names) {
  int number = 0;
  for (const std::string name : names) {
    to.emplace_back(name, ++number);
    to.emplace_back(name.substr(0, 3), number);
  }
}

}  // namespace

std::vector<NumberedName> ownMonthNames(const Region& region) {
  std::vector<NumberedName> names;
  const Symbols& symbols = symbolsOf(region);
  forEachForm([&](auto context, auto width) {
    int count = 0;
    const icu::UnicodeString* months = symbols.getMonths(count, context, width);
    addNames(names, months, count, 1);
  });
  return names;
}

std::vector<NumberedName> englishMonthNames() {
  std::vector<NumberedName> names{{"sept", 9}};
  addWithShortForms(names, {"january", "february", "march", "april", "may", "june", "july", "august", "september",
                            "october", "november", "december"});
  return names;
}

std::vector<NumberedName> weekdayNames(const Region& region) {
  std::vector<NumberedName> names;
  const Symbols& symbols = symbolsOf(region);
  forEachForm([&](auto context, auto width) {
    int count = 0;
    const icu::UnicodeString* days = symbols.getWeekdays(count, context, width);
    addNames(names, days, count, 0);  // ICU leaves element 0 empty
  });
  addWithShortForms(names, {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"});
  return names;
}

std::vector<std::string> dateFillers(const Region& region) {
  std::vector<std::string> fillers{"of", "the"};
  std::string pattern = datePattern(region, "yMMMMd");
  for (std::size_t open = 0; (open = pattern.find('\'', open)) != std::string::npos;) {
    const std::size_t close = std::min(pattern.find('\'', open + 1), pattern.size());
    fillers.push_back(plainText(pattern.substr(open + 1, close - open - 1)));
    open = std::min(close + 1, pattern.size());
  }
  return fillers;
}

std::vector<DatePart> numericDateOrder(const Region& region) {
  const std::string pattern = datePattern(region, "yMd");
  std::vector<std::pair<std::size_t, DatePart>> places{
      {pattern.find('y'), DatePart::year}, {pattern.find('M'), DatePart::month}, {pattern.find('d'), DatePart::day}};
  std::sort(places.begin(), places.end());
  return {places[0].second, places[1].second, places[2].second};
}

}  // namespace tallyvane::cli
