#include "freedesktop/EventTextParts.h"

#include <algorithm>
#include <string_view>

namespace tallyvane::ical {

namespace {

constexpr std::string_view pictureLead = "\xE2\x90";  // of U+2400 to U+243F in UTF-8
constexpr unsigned char firstPicture = 0x80;          // the third byte: U+2400
constexpr unsigned char pictureOfDelete = 0xA1;
constexpr unsigned char deleteCharacter = 0x7F;

void addEventComponents(icalcomponent* within, std::vector<icalcomponent*>& all) {
  icalcompiter iterator = icalcomponent_begin_component(within, ICAL_ANY_COMPONENT);
  for (icalcomponent* child = icalcompiter_deref(&iterator); child != nullptr; child = icalcompiter_next(&iterator)) {
    if (icalcomponent_isa(child) == ICAL_VEVENT_COMPONENT) all.push_back(child);
    addEventComponents(child, all);
  }
}

}  // namespace

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

Component emptyFile() {
  Component file(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
  icalcomponent_add_property(file.get(), icalproperty_new_version("2.0"));
  icalcomponent_add_property(file.get(), icalproperty_new_prodid("-//Tallyvane//Tallyvane//EN"));
  return file;
}

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
