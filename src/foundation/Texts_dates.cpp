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

  icu::SimpleDateFormat& formatOfTemplate(std::string_view letters) {
    return formatIn(ofTemplates_, letters, [&] { return bestPattern(letters); });
  }
  icu::UnicodeString bestPattern(std::string_view letters) {
    UErrorCode status = U_ZERO_ERROR;
    if (!generator_)
      generator_.reset(icu::DateTimePatternGenerator::createInstance(icu::Locale(region_.locale.c_str()), status));
    requireIcu(status, "date patterns");
    icu::UnicodeString pattern = generator_->getBestPattern(unicodeOf(letters), status);
    requireIcu(status, "a date pattern");
    return pattern;
  }
  icu::SimpleDateFormat& formatOfPattern(std::string_view pattern) {
    return formatIn(ofPatterns_, pattern, [&] { return unicodeOf(pattern); });
  }

 private:
  using Formats = std::vector<std::pair<std::string, std::unique_ptr<icu::SimpleDateFormat>>>;

  template <typename MakePattern>
  icu::SimpleDateFormat& formatIn(Formats& formats, std::string_view name, MakePattern makePattern) {
    for (const auto& [known, format] : formats)
      if (known == name) return *format;
    return *formats.emplace_back(name, makeFormat(makePattern())).second;
  }

  std::unique_ptr<icu::SimpleDateFormat> makeFormat(const icu::UnicodeString& pattern) {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(pattern, icu::Locale(region_.locale.c_str()), status);
    requireIcu(status, "a date format");
    format->adoptCalendar(calendarSystemOf(region_).release());
    return format;
  }

  Region region_;
  std::unique_ptr<icu::DateTimePatternGenerator> generator_;
  Formats ofTemplates_;
  Formats ofPatterns_;
};

DateTexts& textsOf(const Region& region) {
  return perRegion<DateTexts>(region, [](const Region& its) { return std::make_unique<DateTexts>(its); });
}

std::string formatted(const icu::SimpleDateFormat& format, Date date) {
  icu::UnicodeString text;
  format.format(icuDateOf(date), text);
  return utf8Of(text);
}

}  // namespace

std::string formattedDate(const Region& region, Date date, std::string_view templateLetters) {
  return formatted(textsOf(region).formatOfTemplate(templateLetters), date);
}

std::string datePattern(const Region& region, std::string_view templateLetters) {
  return utf8Of(textsOf(region).bestPattern(templateLetters));
}

std::string dateInPattern(const Region& region, Date date, std::string_view pattern) {
  return formatted(textsOf(region).formatOfPattern(pattern), date);
}

}  // namespace tallyvane
