#include "cli/input/DueDateInput.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "cli/input/CalendarDay.h"
#include "cli/input/DateNames.h"
#include "cli/input/InputText.h"
#include "common/Sentences.h"
#include "foundation/Ascii.h"
#include "foundation/Calendar.h"

namespace tallyvane::cli {

namespace {

// Nothing: the text has another form.
using Reading = std::optional<Result<Date>>;

// A part of a longer word: letters of any script; after or before a figure also figures.
bool continues(char c, char nameEnd) {
  const bool isLetter = (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
  return isLetter || (isAsciiDigit(c) && isAsciiDigit(nameEnd));
}

std::vector<std::string> partsOf(const std::string& text) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; (at = text.find_first_not_of(" ,./-", at)) != std::string::npos;) {
    const std::size_t end = std::min(text.find_first_of(" ,./-", at), text.size());
    parts.push_back(text.substr(at, end - at));
    at = end;
  }
  return parts;
}

// "+10d", "in 10 days"; "-10d", "10 days ago".
std::optional<UnitCount> stepFromToday(const std::string& text) {
  constexpr std::string_view ahead = "in ";
  constexpr std::string_view back = " ago";
  const std::string_view whole = text;
  if (whole.starts_with('+')) return unitCount(whole.substr(1));
  if (whole.starts_with(ahead)) return unitCount(whole.substr(ahead.size()));
  const bool isBack = whole.starts_with('-') || whole.ends_with(back);
  if (!isBack) return std::nullopt;
  auto step = unitCount(whole.starts_with('-') ? whole.substr(1) : whole.substr(0, whole.size() - back.size()));
  if (step) step->count = -step->count;
  return step;
}

Reading dayFromToday(const std::string& text, const Region& region, Date now, Side /*side*/) {
  const Calendar& calendar = Calendar::of(region);
  const auto days = [&](int count) { return calendar.startOfDay(addDays(calendar.civilDay(now), count)); };
  if (text == "today") return days(0);
  if (text == "tomorrow") return days(1);
  if (text == "yesterday") return days(-1);
  const auto step = stepFromToday(text);
  if (!step) return std::nullopt;
  DateSteps steps;
  if (step->unit == Unit::day) steps.days = step->count;
  if (step->unit == Unit::week) steps.weeks = step->count;
  if (step->unit == Unit::month) steps.months = step->count;
  if (step->unit == Unit::year) steps.months = std::int64_t{12} * step->count;
  return withinYears(calendar.startOfDay(calendar.adding(calendar.startOfDay(now), steps)), region);
}

// "next" leaves today out, and so does "last".
Reading nearWeekday(const std::string& text, const Region& region, Date now, Side side) {
  constexpr int daysOfAWeek = 7;
  std::string name = text;
  const bool leavesTodayOut = name.starts_with("next ") || name.starts_with("last ");
  if (leavesTodayOut) {
    side = name.starts_with("next ") ? Side::ahead : Side::back;
    name.erase(0, 5);
  }
  while (name.ends_with('.')) name.pop_back();
  const auto names = weekdayNames(region);
  const auto found =
      std::find_if(names.begin(), names.end(), [&](const NumberedName& candidate) { return candidate.first == name; });
  if (found == names.end()) return std::nullopt;
  const Calendar& calendar = Calendar::of(region);
  const int distance = (found->second - calendar.weekday(now) + daysOfAWeek) % daysOfAWeek;
  const bool isToday = distance == 0 && !leavesTodayOut;
  int days = distance == 0 && leavesTodayOut ? daysOfAWeek : distance;
  if (side == Side::back) days = isToday ? 0 : distance - daysOfAWeek;
  return calendar.startOfDay(addDays(calendar.civilDay(now), days));
}

// Year, month and day in figures. Four digits in front mean the Gregorian date that reads the same everywhere.
Reading dayInFigures(const std::string& text, const Region& region, Date now, Side side) {
  const std::vector<std::string> parts = partsOf(text);
  const bool areFigures = std::all_of(parts.begin(), parts.end(), [](const auto& part) { return wholeNumber(part); });
  if (!areFigures || parts.size() < 2 || parts.size() > 3) return std::nullopt;
  CalendarDay day;
  std::vector<DatePart> order{DatePart::year, DatePart::month, DatePart::day};
  const bool isInternational = parts[0].size() == 4 && parts.size() == 3 && text[4] == '-';
  day.isGregorian = isInternational;
  if (parts[0].size() != 4) order = numericDateOrder(region);
  if (parts.size() == 2) order.erase(std::find(order.begin(), order.end(), DatePart::year));
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (order[i] == DatePart::year) day.year = parts[i];
    if (order[i] == DatePart::month) day.month = *wholeNumber(parts[i]);
    if (order[i] == DatePart::day) day.day = *wholeNumber(parts[i]);
  }
  return startOf(day, region, now, side);
}

struct FoundMonth {
  std::size_t at = 0;
  std::size_t length = 0;
  int month = 0;
  bool isGregorian = false;
};

// The longest of the names that stands in the text as a word of its own.
void findLonger(const std::string& text, const std::vector<NumberedName>& names, bool areGregorian, FoundMonth& found) {
  for (const auto& [name, month] : names) {
    const std::size_t at = text.find(name);
    if (at == std::string::npos || name.size() <= found.length) continue;
    const std::size_t end = at + name.size();
    if (at > 0 && continues(text[at - 1], name.front())) continue;
    if (end < text.size() && continues(text[end], name.back())) continue;
    found = {at, name.size(), month, areGregorian};
  }
}

void dropOrdinalEnding(std::string& part) {
  if (part.size() < 3 || !isAsciiDigit(part[0])) return;
  for (const char* ending : {"st", "nd", "rd", "th"})
    if (part.ends_with(ending)) part.resize(part.size() - 2);
}

Reading dayOfNamedMonth(const std::string& text, const Region& region, Date now, Side side) {
  FoundMonth found;
  findLonger(text, ownMonthNames(region), false, found);
  findLonger(text, englishMonthNames(), true, found);
  if (found.length == 0) return std::nullopt;
  std::vector<std::string> parts = partsOf(text.substr(0, found.at) + " " + text.substr(found.at + found.length));
  for (const std::string& filler : dateFillers(region)) std::erase(parts, filler);
  std::for_each(parts.begin(), parts.end(), dropOrdinalEnding);
  const bool areFigures = std::all_of(parts.begin(), parts.end(), [](const auto& part) { return wholeNumber(part); });
  if (!areFigures || parts.empty() || parts.size() > 2) return std::nullopt;
  if (parts.size() == 2 && parts[0].size() == 4) std::swap(parts[0], parts[1]);
  const std::string year = parts.size() == 2 ? parts[1] : "";
  return startOf({found.isGregorian, year, found.month, *wholeNumber(parts[0])}, region, now, side);
}

Result<Date> readDate(const Region& region, Date now, std::string_view text, Side side, std::string_view examples) {
  const std::string plain = plainText(text);
  for (const auto read : {dayFromToday, nearWeekday, dayInFigures, dayOfNamedMonth}) {
    const Reading reading = read(plain, region, now, side);
    if (reading && *reading) return *reading;
    if (reading) return Error{sentence("\"{}\" is not a date: {}.", text, reading->error())};
  }
  // translators: the second is examples, which are typed in English
  return Error{sentence("\"{}\" is not a date; write it like {}.", text, examples)};
}

}  // namespace

Result<Date> readDueDate(const Region& region, Date now, std::string_view text) {
  return readDate(region, now, text, Side::ahead,
                  translated("2027-03-01, \"1 Mar\", tomorrow, +10d or \"next friday\""));
}

Result<Date> readPaymentDate(const Region& region, Date now, std::string_view text) {
  Result<Date> date =
      readDate(region, now, text, Side::back, translated("2027-03-01, \"1 Mar\", yesterday, -10d or \"last friday\""));
  if (date && *date > now) return Error{sentence("\"{}\" lies ahead; a payment is logged when it was made.", text)};
  return date;
}

}  // namespace tallyvane::cli
