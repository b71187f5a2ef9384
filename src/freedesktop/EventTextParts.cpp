#include "freedesktop/EventTextParts.h"

namespace tallyvane::ical {

namespace {

void addEventComponents(icalcomponent* within, std::vector<icalcomponent*>& all) {
  icalcompiter iterator = icalcomponent_begin_component(within, ICAL_ANY_COMPONENT);
  for (icalcomponent* child = icalcompiter_deref(&iterator); child != nullptr; child = icalcompiter_next(&iterator)) {
    if (icalcomponent_isa(child) == ICAL_VEVENT_COMPONENT) all.push_back(child);
    addEventComponents(child, all);
  }
}

}  // namespace

Component parsed(const std::string& text) {
  icalerror_set_errors_are_fatal(0);  // in the library a text that is wrong would end the program
  Component root(icalparser_parse_string(text.c_str()));
  if (root == nullptr || icalcomponent_isa(root.get()) == ICAL_NO_COMPONENT) return nullptr;
  const icalcomponent_kind kind = icalcomponent_isa(root.get());
  return kind == ICAL_VCALENDAR_COMPONENT || kind == ICAL_XROOT_COMPONENT ? std::move(root) : nullptr;
}

std::string textOf(const Component& component) {
  const std::unique_ptr<char, decltype(&std::free)> text(icalcomponent_as_ical_string_r(component.get()), &std::free);
  return text == nullptr ? std::string() : std::string(text.get());
}

std::vector<icalcomponent*> eventComponents(const Component& root) {
  std::vector<icalcomponent*> all;
  addEventComponents(root.get(), all);
  return all;
}

std::string xProperty(icalcomponent* component, const std::string& name) {
  for (icalproperty* property = icalcomponent_get_first_property(component, ICAL_X_PROPERTY); property != nullptr;
       property = icalcomponent_get_next_property(component, ICAL_X_PROPERTY)) {
    const char* its = icalproperty_get_x_name(property);
    const char* value = icalproperty_get_x(property);
    if (its != nullptr && value != nullptr && name == its) return value;
  }
  return {};
}

}  // namespace tallyvane::ical
