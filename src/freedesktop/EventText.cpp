#include "freedesktop/EventText.h"

#include <libical/ical.h>

#include <algorithm>

#include "foundation/Calendar.h"
#include "freedesktop/EventTextParts.h"

namespace tallyvane {

namespace {

constexpr const char* soundProperty = "X-TALLYVANE-SOUND";

icalcomponent* alarmComponent(const Alarm& alarm, const std::string& title) {
  icalcomponent* component = icalcomponent_new(ICAL_VALARM_COMPONENT);
  icaltriggertype trigger = icaltriggertype_from_int(0);
  trigger.time = ical::utcValue(alarm.at);
  icalcomponent_add_property(component, icalproperty_new_action(ICAL_ACTION_DISPLAY));
  icalcomponent_add_property(component, icalproperty_new_trigger(trigger));
  icalcomponent_add_property(component, icalproperty_new_description(title.c_str()));
  if (!alarm.soundName.empty()) {
    icalproperty* sound = icalproperty_new_x(alarm.soundName.c_str());
    icalproperty_set_x_name(sound, soundProperty);
    icalcomponent_add_property(component, sound);
  }
  return component;
}

/// The end is the first moment that no longer belongs to the event, so the last day of an all-day event is not it.
void addTimes(icalcomponent* vevent, const Region& region, const CalendarEvent& event) {
  const Calendar& calendar = Calendar::of(region);
  const Date last = std::max(event.start, event.end);
  icalcomponent_add_property(vevent,
                             icalproperty_new_dtstart(event.allDay ? ical::dayValue(calendar.civilDay(event.start))
                                                                   : ical::utcValue(event.start)));
  icalcomponent_add_property(vevent,
                             icalproperty_new_dtend(event.allDay ? ical::dayValue(addDays(calendar.civilDay(last), 1))
                                                                 : ical::utcValue(last)));
}

icalcomponent* eventComponent(const Region& region, const CalendarEvent& event, const std::string& uid, Date stamp) {
  const std::string title = ical::withPictures(event.title);
  icalcomponent* vevent = icalcomponent_new(ICAL_VEVENT_COMPONENT);
  icalcomponent_add_property(vevent, icalproperty_new_uid(uid.c_str()));
  icalcomponent_add_property(vevent, icalproperty_new_dtstamp(ical::utcValue(stamp)));
  addTimes(vevent, region, event);
  icalcomponent_add_property(vevent, icalproperty_new_summary(title.c_str()));
  // A bill takes none of the day's time.
  icalcomponent_add_property(vevent, icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT));
  for (const Alarm& alarm : event.alarms) icalcomponent_add_component(vevent, alarmComponent(alarm, title));
  return vevent;
}

Date momentOf(const Region& region, const icaltimetype& value) {
  const Calendar& calendar = Calendar::of(region);
  const CivilDay day{std::chrono::year{value.year} / std::chrono::month{static_cast<unsigned>(value.month)} /
                     std::chrono::day{static_cast<unsigned>(value.day)}};
  if (value.is_date != 0) return calendar.startOfDay(day);
  if (value.zone == nullptr) {
    return calendar.wallTime(day, value.hour, value.minute) + std::chrono::seconds{value.second};
  }
  auto* zone = const_cast<icaltimezone*>(value.zone);
  return Date{std::chrono::seconds{icaltime_as_timet_with_zone(value, zone)}};
}

std::vector<Alarm> alarmsOf(const Region& region, icalcomponent* vevent, Date start) {
  std::vector<Alarm> alarms;
  for (icalcomponent* alarm = icalcomponent_get_first_component(vevent, ICAL_VALARM_COMPONENT); alarm != nullptr;
       alarm = icalcomponent_get_next_component(vevent, ICAL_VALARM_COMPONENT)) {
    icalproperty* property = icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY);
    if (property == nullptr) continue;
    const icaltriggertype trigger = icalproperty_get_trigger(property);
    const bool isAbsolute = icaltime_is_null_time(trigger.time) == 0;
    const Date at = isAbsolute ? momentOf(region, trigger.time)
                               : start + std::chrono::seconds{icaldurationtype_as_int(trigger.duration)};
    alarms.push_back({at, ical::xProperty(alarm, soundProperty)});
  }
  return alarms;
}

/// Nothing when it has no start, and so no place in a calendar.
std::optional<CalendarEvent> eventOf(const Region& region, icalcomponent* vevent) {
  const icaltimetype start = icalcomponent_get_dtstart(vevent);
  if (icaltime_is_null_time(start) != 0 || icaltime_is_valid_time(start) == 0) return std::nullopt;
  CalendarEvent event;
  const char* summary = icalcomponent_get_summary(vevent);
  event.title = summary == nullptr ? std::string() : ical::withoutPictures(summary);
  event.allDay = start.is_date != 0;
  event.start = momentOf(region, start);
  icaltimetype end = icalcomponent_get_dtend(vevent);
  if (event.allDay && icaltime_is_null_time(end) == 0) icaltime_adjust(&end, -1, 0, 0, 0);
  event.end = icaltime_is_null_time(end) != 0 ? event.start : std::max(event.start, momentOf(region, end));
  event.alarms = alarmsOf(region, vevent, event.start);
  return event;
}

CalendarEvent repeatedAt(const CalendarEvent& first, Date start) {
  CalendarEvent event = first;
  event.start = start;
  event.end = start + (first.end - first.start);
  return event;
}

}  // namespace

Result<std::string> eventText(const Region& region, const CalendarEvent& event, const std::string& uid, Date stamp) {
  const Calendar& calendar = Calendar::of(region);
  bool writable = ical::isWritable(calendar.civilDay(event.start)) && ical::isWritable(calendar.civilDay(event.end));
  for (const Alarm& alarm : event.alarms) writable = writable && ical::isWritable(alarm.at);
  if (!writable) return Error{"its dates lie outside the years that a calendar file can say"};
  const ical::Component file = ical::emptyFile();
  icalcomponent_add_component(file.get(), eventComponent(region, event, uid, stamp));
  return ical::textOf(file);
}

std::optional<EventsOfText> eventsIn(const Region& region, const std::string& text) {
  const ical::Component root = ical::parsed(text);
  if (!root) return std::nullopt;
  EventsOfText found;
  const std::vector<icalcomponent*> all = ical::eventComponents(root);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (ical::isSeries(all[i])) {
      found.hasSeries = true;
    } else if (auto event = eventOf(region, all[i])) {
      found.single.push_back({{i, std::nullopt}, std::move(*event)});
    }
  }
  return found;
}

std::vector<PlacedEvent> repetitionsIn(const Region& region, const std::string& text, Date from, Date to) {
  const ical::Component root = ical::parsed(text);
  if (!root) return {};
  std::vector<PlacedEvent> found;
  const std::vector<icalcomponent*> all = ical::eventComponents(root);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto first = ical::isSeries(all[i]) ? eventOf(region, all[i]) : std::nullopt;
    if (!first) continue;
    const auto handle = [&](const icaltimetype& start) {
      const CalendarEvent event = repeatedAt(*first, momentOf(region, start));
      if (event.start > to) return false;
      if (event.end >= from) found.push_back({{i, ical::secondsOf(start)}, event});
      return true;
    };
    ical::eachRepetition(all, all[i], handle);
  }
  return found;
}

}  // namespace tallyvane
