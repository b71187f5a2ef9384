// Events as iCalendar text (RFC 5545), as it stands in the files of a calendar folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Region.h"
#include "foundation/Result.h"
#include "platform/CalendarStore.h"

namespace tallyvane {

/// The text of a file that holds this one event, with CRLF and folded lines. `stamp` says when it was written. An error
/// when its days lie outside the years 1 to 9998, which the form cannot say.
///
/// Of an all-day event the days in the region's zone are written. An alarm is shown by every calendar program; the
/// sound's name stands in a property of ours beside it. Control characters of the title, which the form forbids, and
/// blanks at its ends, which readers drop, are written as their pictures (U+2400 to U+2421) and read back from them.
[[nodiscard]] Result<std::string> eventText(const Region& region, const CalendarEvent& event, const std::string& uid,
                                            Date stamp);

/// Which event of a text is meant: the VEVENT's place in the text from 0, and which of its repetitions, where it has
/// any.
struct EventPlace {
  std::size_t component = 0;
  std::optional<std::int64_t> repetition;  ///< seconds, as the text counts them; only compared
};

struct PlacedEvent {
  EventPlace place;
  CalendarEvent event;  ///< without identifier and calendar
};

/// The events of a text.
struct EventsOfText {
  std::vector<PlacedEvent> single;
  bool hasSeries = false;  ///< there are repeated events too, see repetitionsIn
};
/// Nothing when the text is not iCalendar.
[[nodiscard]] std::optional<EventsOfText> eventsIn(const Region& region, const std::string& text);

/// The repetitions that overlap the time from `from` to `to`, among the first 60,000 of each event. Events repeated
/// more often than daily have none: nobody pays so often.
[[nodiscard]] std::vector<PlacedEvent> repetitionsIn(const Region& region, const std::string& text, Date from, Date to);

/// The text without that event, everything else in it as it is, byte by byte: of a series only the one repetition goes.
/// Empty when nothing is left in it. An error when there is no such event.
[[nodiscard]] Result<std::string> textWithout(const std::string& text, const EventPlace& place);

}  // namespace tallyvane
