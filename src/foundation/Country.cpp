#include "foundation/Country.h"

#include <unicode/uloc.h>

#include <array>

namespace tallyvane {

std::string countryCode(const Region& region) {
  std::array<char, ULOC_COUNTRY_CAPACITY> code{};
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = uloc_getCountry(region.locale.c_str(), code.data(), ULOC_COUNTRY_CAPACITY, &status);
  return U_SUCCESS(status) ? std::string(code.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace tallyvane
