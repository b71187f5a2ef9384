// What a desktop of a test keeps, to go back to.
#pragma once

#include <tuple>

#include "support/Fakes.h"

namespace tallyvane::testing {

inline auto partsOf(FakeDesktop& desktop) {
  return std::tie(desktop.files, desktop.defaults, desktop.groupDefaults, desktop.cloud, desktop.calendars,
                  desktop.notifications, desktop.random, desktop.clock);
}

/// All that a desktop keeps.
class KeptState {
 public:
  explicit KeptState(FakeDesktop& desktop) : kept_(partsOf(desktop)) {}
  void putInto(FakeDesktop& desktop) const {
    partsOf(desktop) = kept_;
    desktop.workQueue.waiting.clear();
    desktop.mainQueue.waiting.clear();
  }
  [[nodiscard]] const InMemoryFileStore& files() const { return std::get<InMemoryFileStore>(kept_); }

 private:
  std::tuple<InMemoryFileStore, InMemoryUserDefaults, InMemoryUserDefaults, InMemoryKeyValueStore, FakeCalendarStore,
             FakeNotificationCenter, FakeRandom, FakeClock>
      kept_;
};

}  // namespace tallyvane::testing
