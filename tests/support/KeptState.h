// What a desktop of a test keeps, to go back to.
#pragma once

#include "support/Fakes.h"

namespace tallyvane::testing {

/// All that a desktop keeps.
struct KeptState {
  explicit KeptState(const FakeDesktop& desktop)
      : files(desktop.files),
        defaults(desktop.defaults),
        group(desktop.groupDefaults),
        cloud(desktop.cloud),
        calendars(desktop.calendars),
        notifications(desktop.notifications),
        random(desktop.random),
        clock(desktop.clock) {}
  void putInto(FakeDesktop& desktop) const {
    desktop.files = files;
    desktop.defaults = defaults;
    desktop.groupDefaults = group;
    desktop.cloud = cloud;
    desktop.calendars = calendars;
    desktop.notifications = notifications;
    desktop.random = random;
    desktop.clock = clock;
    desktop.workQueue.waiting.clear();
    desktop.mainQueue.waiting.clear();
  }
  InMemoryFileStore files;
  InMemoryUserDefaults defaults;
  InMemoryUserDefaults group;
  InMemoryKeyValueStore cloud;
  FakeCalendarStore calendars;
  FakeNotificationCenter notifications;
  FakeRandom random;
  FakeClock clock;
};

}  // namespace tallyvane::testing
