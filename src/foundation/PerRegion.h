// What is made once per thread, locale and zone.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "foundation/Region.h"

namespace tallyvane {

/// The calling thread's T for the region's locale and zone: made by `make` (a unique_ptr<T> from a region) at first
/// use, kept as long as the thread, never moved. Asking for the region of the last call costs two string comparisons.
template <typename T, typename Make>
T& perRegion(const Region& region, Make make) {
  struct Entry {
    std::string locale;
    std::string timeZone;
    std::unique_ptr<T> made;
    [[nodiscard]] bool isFor(const Region& asked) const { return locale == asked.locale && timeZone == asked.timeZone; }
  };
  thread_local std::vector<Entry> entries;  // the last one asked for stands in front
  if (!entries.empty() && entries.front().isFor(region)) return *entries.front().made;
  for (Entry& entry : entries) {
    if (!entry.isFor(region)) continue;
    std::swap(entry, entries.front());
    return *entries.front().made;
  }
  entries.push_back({region.locale, region.timeZone, make(region)});
  std::swap(entries.front(), entries.back());
  return *entries.front().made;
}

}  // namespace tallyvane
