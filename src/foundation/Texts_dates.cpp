#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>

#include <utility>
#include <vector>

#include "foundation/IcuSupport.h"
#include "foundation/PerRegion.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

// Patterns are made when first asked for: the generator is by far the dearest thing that ICU makes for us.
class DateTexts {
 public:
  explicit DateTexts(const Region& region) : region_{region.locale, region.timeZone, {}} {}

  icu::SimpleDateFormat& formatFor(std::string_view templateLetters) {
    for (const auto& [letters, format] : formats_)
      if (letters == templateLetters) return *format;
    return *formats_.emplace_back(templateLetters, makeFormat(templateLetters)).second;
  }

 private:
  std::unique_ptr<icu::SimpleDateFormat> makeFormat(std::string_view templateLetters) {
    const icu::Locale locale(region_.locale.c_str());
    UErrorCode status = U_ZERO_ERROR;
    if (!generator_) generator_.reset(icu::DateTimePatternGenerator::createInstance(locale, status));
    requireIcu(status, "date patterns");
    const icu::UnicodeString pattern = generator_->getBestPattern(unicodeOf(templateLetters), status);
    auto format = std::make_unique<icu::SimpleDateFormat>(pattern, locale, status);
    requireIcu(status, "a date format");
    format->adoptCalendar(calendarSystemOf(region_).release());
    return format;
  }

  Region region_;
  std::unique_ptr<icu::DateTimePatternGenerator> generator_;
  std::vector<std::pair<std::string, std::unique_ptr<icu::SimpleDateFormat>>> formats_;
};

}  // namespace

std::string formattedDate(const Region& region, Date date, std::string_view templateLetters) {
  DateTexts& texts = perRegion<DateTexts>(region, [](const Region& its) { return std::make_unique<DateTexts>(its); });
  icu::UnicodeString text;
  texts.formatFor(templateLetters).format(icuDateOf(date), text);
  return utf8Of(text);
}

}  // namespace tallyvane
