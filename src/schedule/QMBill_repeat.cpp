#include <array>

#include "storage/QMBill.h"

namespace tallyvane {

namespace {

/// Of the custom selectors days, weeks and months, in this order.
constexpr std::array<std::int64_t, 3> unitKinds = {3, 0, 2};

Array customRule(std::int64_t count, std::int64_t customSelector) {
  Array rule{count};
  // An unknown unit leaves the rule incomplete; its readers fall back. Deliberate.
  const auto selector = static_cast<std::uint64_t>(customSelector);
  if (selector < unitKinds.size()) rule.emplace_back(unitKinds[selector]);
  return rule;
}

}  // namespace

Array QMBill::calculateRepeatValuesWithRepeatSelectorAndCustomNumberAndCustomSelector(
    std::int64_t repeatSelector, std::int64_t customNumber, std::int64_t customSelector) const {
  switch (repeatSelector) {
    case 0:
      return {1, 0};
    case 1:
      return {1, 1};
    case 2:
      return {1, 2};
    case 3:
      return {3, 2};
    case 4:
      return {6, 2};
    case 5:
      return {12, 2};
    case 6:
      return customRule(customNumber, customSelector);
    case 7:
      return {0, 4};
    case 8:
      return {2, 2};
    case 9:
      return {2, 0};
    default:
      return {};
  }
}

}  // namespace tallyvane
