#include "freedesktop/EventText.h"

#include <libical/ical.h>

#include <algorithm>

#include "foundation/Calendar.h"
#include "freedesktop/EventTextParts.h"

namespace tallyvane {

namespace {

constexpr const char* soundProperty = "X-TALLYVANE-SOUND";
constexpr std::string_view pictureLead = "\xE2\x90";  // of U+2400 to U+243F in UTF-8
constexpr unsigned char firstPicture = 0x80;          // the third byte: U+2400
constexpr unsigned char pictureOfDelete = 0xA1;
constexpr unsigned char deleteCharacter = 0x7F;

/// Tabs and line feeds may stand in a text; blanks may too, but readers drop those at its ends.
std::string withPictures(const std::string& text) {
  const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
  const std::size_t last = text.find_last_not_of(" \t");
  std::string written;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto code = static_cast<unsigned char>(text[at]);
    const bool isAtEnd = at < first || at > last;
    if (code == deleteCharacter) {
      (written += pictureLead) += static_cast<char>(pictureOfDelete);
    } else if (isAtEnd || (code < ' ' && code != '\t' && code != '\n')) {
      (written += pictureLead) += static_cast<char>(firstPicture + code);
    } else {
      written += text[at];
    }
  }
  return written;
}

std::string withoutPictures(const std::string& text) {
  std::string read;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool mayBePicture = text.compare(at, pictureLead.size(), pictureLead) == 0 && at + 2 < text.size();
    const auto last = static_cast<unsigned char>(mayBePicture ? text[at + 2] : '\0');
    const bool isControl = last >= firstPicture && last <= firstPicture + ' ';
    if (isControl || last == pictureOfDelete) {
      read += static_cast<char>(isControl ? last - firstPicture : deleteCharacter);
      at += 2;
    } else {
      read += text[at];
    }
  }
  return read;
}

icaltimetype dayValue(CivilDay day) {
  const std::chrono::year_month_day date(day);
  icaltimetype value = icaltime_null_date();
  value.year = static_cast<int>(date.year());
  value.month = static_cast<int>(static_cast<unsigned>(date.month()));
  value.day = static_cast<int>(static_cast<unsigned>(date.day()));
  value.is_date = 1;
  return value;
}

icaltimetype utcValue(Date moment) {
  const CivilDay day{std::chrono::floor<std::chrono::days>(moment).time_since_epoch()};
  const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(moment - Date(day.time_since_epoch())));
  icaltimetype value = dayValue(day);
  value.is_date = 0;
  value.hour = static_cast<int>(time.hours().count());
  value.minute = static_cast<int>(time.minutes().count());
  value.second = static_cast<int>(time.seconds().count());
  value.zone = icaltimezone_get_utc_timezone();
  return value;
}

bool isWritable(CivilDay day) {
  using std::chrono::year;
  return day >= CivilDay{year{1} / 1 / 1} && day < CivilDay{year{9999} / 1 / 1};
}
bool isWritable(Date moment) {
  return isWritable(CivilDay{std::chrono::floor<std::chrono::days>(moment).time_since_epoch()});
}

icalcomponent* alarmComponent(const Alarm& alarm, const std::string& title) {
  icalcomponent* component = icalcomponent_new(ICAL_VALARM_COMPONENT);
  icaltriggertype trigger = icaltriggertype_from_int(0);
  trigger.time = utcValue(alarm.at);
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
  icalcomponent_add_property(vevent, icalproperty_new_dtstart(event.allDay ? dayValue(calendar.civilDay(event.start))
                                                                           : utcValue(event.start)));
  icalcomponent_add_property(
      vevent, icalproperty_new_dtend(event.allDay ? dayValue(addDays(calendar.civilDay(last), 1)) : utcValue(last)));
}

icalcomponent* eventComponent(const Region& region, const CalendarEvent& event, const std::string& uid, Date stamp) {
  const std::string title = withPictures(event.title);
  icalcomponent* vevent = icalcomponent_new(ICAL_VEVENT_COMPONENT);
  icalcomponent_add_property(vevent, icalproperty_new_uid(uid.c_str()));
  icalcomponent_add_property(vevent, icalproperty_new_dtstamp(utcValue(stamp)));
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
  event.title = summary == nullptr ? std::string() : withoutPictures(summary);
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
  bool writable = isWritable(calendar.civilDay(event.start)) && isWritable(calendar.civilDay(event.end));
  for (const Alarm& alarm : event.alarms) writable = writable && isWritable(alarm.at);
  if (!writable) return Error{"its dates lie outside the years that a calendar file can say"};
  const ical::Component file(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
  icalcomponent_add_property(file.get(), icalproperty_new_version("2.0"));
  icalcomponent_add_property(file.get(), icalproperty_new_prodid("-//Tallyvane//Tallyvane//EN"));
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
