#include "freedesktop/CalendarText.h"

#include "freedesktop/EventTextParts.h"

namespace tallyvane {

namespace {

icalproperty* ruleProperty(const RecurrenceRule& rule) {
  icalrecurrencetype recurrence;
  icalrecurrencetype_clear(&recurrence);
  switch (rule.unit) {
    case RecurrenceRule::Unit::days:
      recurrence.freq = ICAL_DAILY_RECURRENCE;
      break;
    case RecurrenceRule::Unit::weeks:
      recurrence.freq = ICAL_WEEKLY_RECURRENCE;
      break;
    case RecurrenceRule::Unit::months:
      recurrence.freq = ICAL_MONTHLY_RECURRENCE;
      break;
  }
  recurrence.interval = static_cast<short>(rule.interval);
  for (std::size_t i = 0; i < rule.monthDays.size(); ++i)
    recurrence.by_month_day[i] = static_cast<short>(rule.monthDays[i]);
  return icalproperty_new_rrule(recurrence);
}

icalproperty* furtherDay(CivilDay day) {
  icaldatetimeperiodtype value{};
  value.time = ical::dayValue(day);
  value.period = icalperiodtype_null_period();
  icalproperty* property = icalproperty_new_rdate(value);
  icalproperty_add_parameter(property, icalparameter_new_value(ICAL_VALUE_DATE));
  return property;
}

icalcomponent* component(const DayEvent& event) {
  icalcomponent* vevent = icalcomponent_new(ICAL_VEVENT_COMPONENT);
  icalcomponent_add_property(vevent, icalproperty_new_uid(event.uid.c_str()));
  icalcomponent_add_property(vevent, icalproperty_new_dtstamp(ical::utcValue(event.stamp)));
  icalcomponent_add_property(vevent, icalproperty_new_dtstart(ical::dayValue(event.day)));
  icalcomponent_add_property(vevent, icalproperty_new_dtend(ical::dayValue(addDays(event.day, 1))));
  if (event.rule) icalcomponent_add_property(vevent, ruleProperty(*event.rule));
  for (const CivilDay day : event.furtherDays) {
    if (ical::isWritable(day)) icalcomponent_add_property(vevent, furtherDay(day));
  }
  icalcomponent_add_property(vevent, icalproperty_new_summary(ical::withPictures(event.title).c_str()));
  icalcomponent_add_property(vevent, icalproperty_new_description(ical::withPictures(event.description).c_str()));
  icalcomponent_add_property(vevent, icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT));
  return vevent;
}

}  // namespace

Result<std::string> calendarText(const std::vector<DayEvent>& events) {
  const ical::Component file = ical::emptyFile();
  for (const DayEvent& event : events) {
    const bool isWritable = ical::isWritable(event.day) && ical::isWritable(event.stamp);
    if (isWritable) icalcomponent_add_component(file.get(), component(event));
  }
  if (icalcomponent_get_first_component(file.get(), ICAL_VEVENT_COMPONENT) == nullptr)
    return Error{"no active bill is due on a day that a calendar can say"};
  return ical::textOf(file);
}

}  // namespace tallyvane
