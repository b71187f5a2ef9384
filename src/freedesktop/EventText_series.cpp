// Repeated events.
#include <algorithm>

#include "freedesktop/EventTextParts.h"

namespace tallyvane::ical {

namespace {

/// More steps than a day-by-day series takes in a century and a half: what goes on longer is no one's calendar.
constexpr int mostSteps = 60'000;

std::string uidOf(icalcomponent* vevent) {
  const char* uid = icalcomponent_get_uid(vevent);
  return uid == nullptr ? std::string() : uid;
}

bool isReplaced(const std::vector<icalcomponent*>& all, icalcomponent* series, const icaltimetype& start) {
  return std::any_of(all.begin(), all.end(), [&](icalcomponent* other) {
    const icaltimetype replaced = replacedRepetition(other);
    return icaltime_is_null_time(replaced) == 0 && uidOf(other) == uidOf(series) &&
           icaltime_compare(replaced, start) == 0;
  });
}

void eachOfRule(icalproperty* rule, const icaltimetype& first, const std::function<bool(const icaltimetype&)>& handle) {
  const icalrecurrencetype recurrence = icalproperty_get_rrule(rule);
  if (recurrence.freq < ICAL_DAILY_RECURRENCE || recurrence.freq > ICAL_YEARLY_RECURRENCE) return;
  icalrecur_iterator* iterator = icalrecur_iterator_new(recurrence, first);
  if (iterator == nullptr) return;
  for (int step = 0; step < mostSteps; ++step) {
    icaltimetype next = icalrecur_iterator_next(iterator);
    if (icaltime_is_null_time(next) != 0 || !handle(next)) break;
  }
  icalrecur_iterator_free(iterator);
}

std::vector<icaltimetype> addedDates(icalcomponent* vevent, const icaltimetype& first) {
  std::vector<icaltimetype> dates;
  for (icalproperty* added = icalcomponent_get_first_property(vevent, ICAL_RDATE_PROPERTY); added != nullptr;
       added = icalcomponent_get_next_property(vevent, ICAL_RDATE_PROPERTY)) {
    const icaldatetimeperiodtype value = icalproperty_get_rdate(added);
    icaltimetype start = icaltime_is_null_time(value.time) != 0 ? value.period.start : value.time;
    if (start.zone == nullptr) start.zone = first.zone;
    if (icaltime_compare(start, first) != 0) dates.push_back(start);
  }
  return dates;
}

}  // namespace

icaltimetype replacedRepetition(icalcomponent* vevent) { return icalcomponent_get_recurrenceid(vevent); }

bool isSeries(icalcomponent* vevent) {
  return icaltime_is_null_time(replacedRepetition(vevent)) != 0 &&
         (icalcomponent_get_first_property(vevent, ICAL_RRULE_PROPERTY) != nullptr ||
          icalcomponent_get_first_property(vevent, ICAL_RDATE_PROPERTY) != nullptr);
}

void eachRepetition(const std::vector<icalcomponent*>& all, icalcomponent* vevent,
                    const std::function<bool(const icaltimetype& start)>& handle) {
  icaltimetype first = icalcomponent_get_dtstart(vevent);
  const auto handleKept = [&](const icaltimetype& start) {
    icaltimetype asked = start;
    if (icalproperty_recurrence_is_excluded(vevent, &first, &asked) || isReplaced(all, vevent, start)) return true;
    return handle(start);
  };
  icalproperty* rule = icalcomponent_get_first_property(vevent, ICAL_RRULE_PROPERTY);
  if (rule == nullptr) handleKept(first);
  if (rule != nullptr) eachOfRule(rule, first, handleKept);
  // All of them are read first: asking what is excluded moves the event's own place in its properties.
  for (const icaltimetype& start : addedDates(vevent, first)) handleKept(start);
}

std::int64_t secondsOf(const icaltimetype& value) {
  return icaltime_as_timet_with_zone(value, const_cast<icaltimezone*>(value.zone));
}

}  // namespace tallyvane::ical
