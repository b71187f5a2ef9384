// Taking an event out of a text. The text is edited by lines and not written anew, so that what other programs put
// there stays as they wrote it.
#include <algorithm>
#include <cctype>

#include "freedesktop/EventText.h"
#include "freedesktop/EventTextParts.h"

namespace tallyvane {

namespace {

struct Stretch {
  std::size_t from = 0;
  std::size_t to = 0;  ///< behind its last line's end
};

std::size_t lineEndAfter(const std::string& text, std::size_t at) {
  const std::size_t feed = text.find('\n', at);
  return feed == std::string::npos ? text.size() : feed + 1;
}

/// A line without its end, in upper case.
std::string lineAt(const std::string& text, std::size_t from, std::size_t to) {
  while (to > from && (text[to - 1] == '\n' || text[to - 1] == '\r')) --to;
  std::string line = text.substr(from, to - from);
  for (char& c : line) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return line;
}

/// The VEVENTs of a text, in its order.
std::vector<Stretch> eventStretches(const std::string& text) {
  std::vector<Stretch> all;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = lineEndAfter(text, at);
    const std::string line = lineAt(text, at, end);
    if (line == "BEGIN:VEVENT") begin = at;
    if (line == "END:VEVENT") all.push_back({begin, end});
    at = end;
  }
  return all;
}

/// ";TZID=Europe/Berlin" of the event's start, with folded lines put together.
std::string parametersOfStart(const std::string& text, const Stretch& event) {
  for (std::size_t at = event.from; at < event.to;) {
    const std::size_t end = lineEndAfter(text, at);
    if (!lineAt(text, at, end).starts_with("DTSTART")) {
      at = end;
      continue;
    }
    std::string whole = text.substr(at, end - at);
    for (std::size_t next = end; next < event.to && (text[next] == ' ' || text[next] == '\t');) {
      const std::size_t nextEnd = lineEndAfter(text, next);
      whole.resize(whole.find_last_not_of("\r\n") + 1);
      whole += text.substr(next + 1, nextEnd - next - 1);
      next = nextEnd;
    }
    constexpr std::size_t name = std::string_view("DTSTART").size();
    // A colon inside quotes belongs to a parameter; the value of a date has none.
    return whole.substr(name, whole.rfind(':') - name);
  }
  return {};
}

void exclude(std::string& text, const Stretch& event, const icaltimetype& start) {
  const std::string lineEnd = text.find("\r\n") == std::string::npos ? "\n" : "\r\n";
  const std::unique_ptr<char, decltype(&std::free)> value(icaltime_as_ical_string_r(start), &std::free);
  const std::size_t lastLine = text.rfind('\n', event.to - 2) + 1;
  text.insert(lastLine, "EXDATE" + parametersOfStart(text, event) + ":" + value.get() + lineEnd);
}

/// The start of the repetition; null time when the event has no such one.
icaltimetype startOf(const std::vector<icalcomponent*>& all, icalcomponent* series, std::int64_t repetition) {
  icaltimetype found = icaltime_null_time();
  ical::eachRepetition(all, series, [&](const icaltimetype& start) {
    if (ical::secondsOf(start) != repetition) return true;
    found = start;
    return false;
  });
  return found;
}

/// The repeated event whose repetition this one stands in for; the number of events when there is none.
std::size_t seriesBehind(const std::vector<icalcomponent*>& all, icalcomponent* vevent) {
  const auto uid = [](icalcomponent* event) {
    const char* text = icalcomponent_get_uid(event);
    return std::string(text == nullptr ? "" : text);
  };
  const auto found = std::find_if(all.begin(), all.end(), [&](icalcomponent* other) {
    return other != vevent && ical::isSeries(other) && uid(other) == uid(vevent);
  });
  return static_cast<std::size_t>(found - all.begin());
}

bool holdsAnyComponent(const std::string& text) {
  for (std::size_t at = 0; at < text.size(); at = lineEndAfter(text, at)) {
    const std::string line = lineAt(text, at, lineEndAfter(text, at));
    if (line == "BEGIN:VTODO" || line == "BEGIN:VJOURNAL" || line == "BEGIN:VEVENT") return true;
  }
  return false;
}

}  // namespace

Result<std::string> textWithout(const std::string& text, const EventPlace& place) {
  const Error absent{"the event is no longer in it"};
  const ical::Component root = ical::parsed(text);
  if (!root) return Error{"not iCalendar"};
  const std::vector<icalcomponent*> all = ical::eventComponents(root);
  const std::vector<Stretch> stretches = eventStretches(text);
  if (place.component >= all.size() || stretches.size() != all.size()) return absent;

  icalcomponent* event = all[place.component];
  const Stretch stretch = stretches[place.component];
  std::string edited = text;
  if (place.repetition) {
    const icaltimetype start = startOf(all, event, *place.repetition);
    if (icaltime_is_null_time(start) != 0) return absent;
    exclude(edited, stretch, start);
    return edited;
  }
  const icaltimetype replaced = ical::replacedRepetition(event);
  const std::size_t series = icaltime_is_null_time(replaced) != 0 ? all.size() : seriesBehind(all, event);
  const auto cut = [&] { edited.erase(stretch.from, stretch.to - stretch.from); };
  const auto excludeReplaced = [&] {
    if (series < all.size()) exclude(edited, stretches[series], replaced);
  };
  // What stands later in the text is edited first, so that the places before it still hold.
  if (series < all.size() && series > place.component) {
    excludeReplaced();
    cut();
  } else {
    cut();
    excludeReplaced();
  }
  return holdsAnyComponent(edited) ? edited : std::string();
}

}  // namespace tallyvane
