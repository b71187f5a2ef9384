#include <unicode/coll.h>

#include "foundation/IcuSupport.h"
#include "foundation/PerRegion.h"
#include "foundation/Texts.h"

namespace tallyvane {

namespace {

// The secondary strength tells letters and accents apart, but not case.
std::unique_ptr<icu::Collator> caseInsensitiveCollator(const Region& region) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(icu::Locale(region.locale.c_str()), status));
  requireIcu(status, "the order of texts");
  collator->setStrength(icu::Collator::SECONDARY);
  return collator;
}

icu::StringPiece pieceOf(std::string_view text) { return {text.data(), static_cast<std::int32_t>(text.size())}; }

}  // namespace

int localizedCaseInsensitiveCompare(const Region& region, std::string_view left, std::string_view right) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Collator& collator = perRegion<icu::Collator>(region, caseInsensitiveCollator);
  const UCollationResult order = collator.compareUTF8(pieceOf(left), pieceOf(right), status);
  requireIcu(status, "a comparison");
  return static_cast<int>(order);
}

}  // namespace tallyvane
