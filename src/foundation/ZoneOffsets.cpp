#include "foundation/ZoneOffsets.h"

#include <unicode/tztrans.h>

#include <algorithm>
#include <iterator>

#include "foundation/IcuSupport.h"

namespace tallyvane {

OffsetSpan ZoneOffsets::find(Date date) {
  auto after =
      std::partition_point(spans_.begin(), spans_.end(), [&](const OffsetSpan& span) { return span.from <= date; });
  if (after == spans_.begin() || !std::prev(after)->holds(date)) after = std::next(spans_.insert(after, ask(date)));
  last_ = static_cast<std::size_t>(std::prev(after) - spans_.begin());
  return spans_[last_];
}

OffsetSpan ZoneOffsets::ask(Date date) const {
  const UDate moment = icuDateOf(date);
  OffsetSpan span{Date::min(), Date::max(), {}};
  icu::TimeZoneTransition change;
  if (zone_.getPreviousTransition(moment, true, change) && change.getTime() > icuDateOf(earliestDate))
    span.from = dateOfIcu(change.getTime());
  if (zone_.getNextTransition(moment, false, change) && change.getTime() < icuDateOf(latestDate))
    span.to = dateOfIcu(change.getTime());
  std::int32_t standard = 0;
  std::int32_t saving = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone_.getOffset(moment, false, standard, saving, status);
  requireIcu(status, "the offset of a time zone");
  span.offset = std::chrono::milliseconds{standard + saving};
  return span;
}

}  // namespace tallyvane
