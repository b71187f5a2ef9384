#include "foundation/Currency.h"

#include <unicode/locid.h>
#include <unicode/ucurr.h>

#include <array>

namespace tallyvane {

std::u16string currencyCode(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale locale(region.locale.c_str());
  locale.addLikelySubtags(status);
  std::array<char16_t, 4> code{};
  const std::int32_t length = ucurr_forLocale(locale.getName(), code.data(), code.size(), &status);
  return U_SUCCESS(status) ? std::u16string(code.data(), static_cast<std::size_t>(length)) : std::u16string();
}

}  // namespace tallyvane
