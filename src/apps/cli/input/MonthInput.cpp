#include "cli/input/MonthInput.h"

#include <optional>
#include <string>

#include "cli/input/CalendarDay.h"
#include "cli/input/DueDateInput.h"
#include "cli/input/InputText.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"

namespace tallyvane::cli {

namespace {

/// Nothing: the text has another form.
std::optional<Result<Date>> monthInFigures(const std::string& text, const Region& region, Date now) {
  constexpr std::size_t yearDigits = 4;
  if (text.size() <= yearDigits || text[yearDigits] != '-') return std::nullopt;
  const std::string year = text.substr(0, yearDigits);
  const auto month = wholeNumber(std::string_view(text).substr(yearDigits + 1));
  if (!wholeNumber(year) || !month) return std::nullopt;
  return startOf({.isGregorian = true, .year = year, .month = *month, .day = 1}, region, now, Side::back);
}

}  // namespace

Result<Date> readMonth(const Region& region, Date now, std::string_view text) {
  const std::string plain = plainText(text);
  if (plain == "this month") return now;
  if (plain == "last month") return Calendar::of(region).adding(now, {.months = -1});
  if (const auto read = monthInFigures(plain, region, now)) {
    if (*read) return **read;
    return Error{sentence("\"{}\" is not a month: {}.", text, read->error())};
  }
  for (const std::string& day : {plain, "1 " + plain}) {
    if (const Result<Date> read = readPaymentDate(region, now, day)) return *read;
  }
  return Error{
      sentence("\"{}\" is not a month; write it like 2027-02, february, \"feb 2027\" or \"last month\".", text)};
}

}  // namespace tallyvane::cli
