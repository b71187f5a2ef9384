// A zone's offset from UTC, remembered between clock changes.
#pragma once

#include <unicode/basictz.h>

#include <chrono>
#include <cstddef>
#include <vector>

#include "foundation/Date.h"

namespace tallyvane {

/// The time from one clock change of a zone up to the next. The first and the last one are open.
struct OffsetSpan {
  Date from;  ///< inclusive
  Date to;    ///< exclusive
  std::chrono::microseconds offset;
  [[nodiscard]] bool holds(Date date) const { return from <= date && date < to; }
};

/// Asks the zone once per span. Refers to the zone, which outlives it.
class ZoneOffsets {
 public:
  explicit ZoneOffsets(const icu::BasicTimeZone& zone) : zone_(zone) {}

  /// The span that holds the instant.
  [[nodiscard]] OffsetSpan at(Date date) {
    if (last_ < spans_.size() && spans_[last_].holds(date)) return spans_[last_];
    return find(date);
  }

 private:
  [[nodiscard]] OffsetSpan find(Date date);
  [[nodiscard]] OffsetSpan ask(Date date) const;

  const icu::BasicTimeZone& zone_;
  std::vector<OffsetSpan> spans_;  // in order
  std::size_t last_ = 0;
};

}  // namespace tallyvane
