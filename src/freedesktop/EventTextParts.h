// What the parts of EventText share: libical's components, and the lines of a text.
#pragma once

#include <libical/ical.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Calendar.h"

namespace tallyvane::ical {

struct Free {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, Free>;

/// A calendar without events, which says which program made it.
[[nodiscard]] Component emptyFile();
/// Null when the text is not iCalendar.
[[nodiscard]] Component parsed(const std::string& text);
[[nodiscard]] std::string textOf(const Component& component);

/// A title or another text as it can be written: control characters, and blanks at its ends, which readers drop, as
/// their pictures; tabs and line feeds within it stay. And such a text as it was.
[[nodiscard]] std::string withPictures(const std::string& text);
[[nodiscard]] std::string withoutPictures(const std::string& text);

[[nodiscard]] icaltimetype dayValue(CivilDay day);
[[nodiscard]] icaltimetype utcValue(Date moment);
/// Whether it lies in the years 1 to 9998, which the form can say.
[[nodiscard]] bool isWritable(CivilDay day);
[[nodiscard]] bool isWritable(Date moment);

/// All VEVENTs in the order in which they stand in the text; owned by the root.
[[nodiscard]] std::vector<icalcomponent*> eventComponents(const Component& root);
/// The value of a property of ours or of others; empty without it.
[[nodiscard]] std::string xProperty(icalcomponent* component, const std::string& name);

/// Whether the event is repeated. One that stands in for a single repetition is not.
[[nodiscard]] bool isSeries(icalcomponent* vevent);
/// Calls back with the start of each repetition, those of one rule in their order, until that answers false. Left out
/// are excluded ones and those that another event of the text stands in for.
void eachRepetition(const std::vector<icalcomponent*>& all, icalcomponent* vevent,
                    const std::function<bool(const icaltimetype& start)>& handle);
/// Tells the repetitions of one event apart.
[[nodiscard]] std::int64_t secondsOf(const icaltimetype& value);
/// The repetition that the event stands in for; null time for none.
[[nodiscard]] icaltimetype replacedRepetition(icalcomponent* vevent);

}  // namespace tallyvane::ical
