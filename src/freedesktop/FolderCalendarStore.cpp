#include "freedesktop/FolderCalendarStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <utility>

#include "foundation/Ascii.h"
#include "foundation/Calendar.h"

namespace tallyvane {

namespace {

constexpr std::string_view titleFile = "displayname";
constexpr std::string_view eventEnding = ".ics";

/// A folder's name that is fit for an address on a server too.
std::string folderNameFor(std::string_view title) {
  constexpr std::size_t longest = 40;
  std::string name;
  for (const char c : title.substr(0, longest)) {
    const bool isPlain = isAsciiAlphanumeric(c);
    if (isPlain) name += c;
    if (!isPlain && !name.empty() && name.back() != '-') name += '-';
  }
  while (name.ends_with('-')) name.pop_back();
  return name.empty() ? "calendar" : name;
}

/// FNV-1a in its 64-bit form; chosen for being the same for ever, not for being hard to guess.
std::uint64_t hashOf(std::string_view text, std::uint64_t seed) {
  std::uint64_t hash = 14695981039346656037U ^ seed;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return hash;
}

/// In its calendar an identifier is the file's name, the place in it and, of a series, the repetition.
std::string identifierOf(const std::string& file, const EventPlace& place) {
  std::string text = fmt::format("{}/{}", file, place.component);
  if (place.repetition) text += fmt::format("/{}", *place.repetition);
  return text;
}

struct Named {
  std::string file;
  EventPlace place;
};

template <typename Number>
bool readWhole(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

std::optional<Named> named(const std::string& identifier) {
  const std::size_t slash = identifier.find('/');
  if (slash == std::string::npos || slash == 0) return std::nullopt;
  Named found{identifier.substr(0, slash), {}};
  std::string_view rest = std::string_view(identifier).substr(slash + 1);
  if (const std::size_t next = rest.find('/'); next != std::string_view::npos) {
    if (!readWhole(rest.substr(next + 1), found.place.repetition.emplace())) return std::nullopt;
    rest = rest.substr(0, next);
  }
  return readWhole(rest, found.place.component) ? std::optional(found) : std::nullopt;
}

bool sameStamp(const struct stat& left, const struct stat& right) {
  const auto same = [](const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; };
  return left.st_ino == right.st_ino && left.st_dev == right.st_dev && left.st_size == right.st_size &&
         same(left.st_mtim, right.st_mtim) && same(left.st_ctim, right.st_ctim);
}

}  // namespace

std::vector<EventCalendar> FolderCalendarStore::calendars() {
  const std::string root = root_();
  if (!files_.exists(root)) return {};
  const auto names = files_.list(root);
  if (!names) throw CalendarStoreError(names.error());
  std::vector<EventCalendar> found;
  for (const std::string& name : *names) {
    if (name.starts_with('.') || !files_.isFolder(folderOf(name))) continue;
    std::string title;
    if (auto text = files_.read(folderOf(name) + "/" + std::string(titleFile))) title = std::move(*text);
    if (title.ends_with('\n')) title.pop_back();  // as an editor leaves it
    found.push_back({name, title.empty() ? name : title, root});
  }
  return found;
}

std::string FolderCalendarStore::freeFolderName(const std::string& title) {
  const std::string wanted = folderNameFor(title);
  std::string name = wanted;
  for (int number = 2; files_.exists(folderOf(name)); ++number) name = fmt::format("{}-{}", wanted, number);
  return name;
}

Result<EventCalendar> FolderCalendarStore::save(const EventCalendar& calendar) {
  if (calendar.title.empty()) return Error{"a calendar needs a title"};
  EventCalendar saved = calendar;
  saved.source = root_();
  saved.identifier = freeFolderName(calendar.title);
  const std::string folder = folderOf(saved.identifier);
  if (Result<> made = files_.createFolder(folder); !made) return Error{made.error()};
  if (Result<> titled = files_.save(folder + "/" + std::string(titleFile), calendar.title); !titled) {
    (void)files_.remove(folder);  // it would show under another title
    return Error{titled.error()};
  }
  return saved;
}

std::string FolderCalendarStore::freeUid(const CalendarEvent& event) {
  const std::string day = std::to_string(Calendar::of(region_).civilDay(event.start).time_since_epoch().count());
  const std::string folder = folderOf(event.calendar);
  const std::string all = folder + '\0' + event.title + '\0' + day;
  const std::string wanted = fmt::format("{:016x}{:016x}", hashOf(all, 0), hashOf(all, 1));
  std::string uid = wanted;
  for (int number = 2; files_.exists(folder + "/" + uid + std::string(eventEnding)); ++number) {
    uid = fmt::format("{}-{}", wanted, number);
  }
  return uid;
}

Result<> FolderCalendarStore::save(const CalendarEvent& event) {
  const std::string folder = folderOf(event.calendar);
  if (event.calendar.empty() || !files_.isFolder(folder)) return Error{folder + ": there is no such calendar"};
  const std::string uid = freeUid(event);
  const Result<std::string> text = eventText(region_, event, uid, clock_.now());
  if (!text) return Error{event.title + ": " + text.error()};
  return files_.save(folder + "/" + uid + std::string(eventEnding), *text);
}

Result<> FolderCalendarStore::remove(const CalendarEvent& event) {
  const std::optional<Named> found = named(event.identifier);
  if (event.calendar.empty() || !found) return Error{"'" + event.identifier + "': not an event of a calendar"};
  const std::string path = folderOf(event.calendar) + "/" + found->file;
  const Result<std::string> text = files_.read(path);
  if (!text) return Error{text.error()};
  const Result<std::string> rest = textWithout(*text, found->place);
  if (!rest) return Error{path + ": " + rest.error()};
  return rest->empty() ? files_.remove(path) : files_.save(path, *rest);
}

std::vector<CalendarEvent> FolderCalendarStore::events(const std::string& calendar, Date from, Date to) {
  const std::string folder = folderOf(calendar);
  const auto names = files_.list(folder);
  if (!names) {
    log_.diagnostic("The events cannot be read: " + names.error());
    return {};
  }
  std::vector<CalendarEvent> found;
  for (const std::string& name : *names) {
    if (name.starts_with('.') || !name.ends_with(eventEnding)) continue;
    const auto take = [&](const PlacedEvent& placed) {
      if (placed.event.start > to || placed.event.end < from) return;
      found.push_back(placed.event);
      found.back().identifier = identifierOf(name, placed.place);
      found.back().calendar = calendar;
    };
    const EventsOfText* events = eventsOfFile(folder + "/" + name);
    if (events == nullptr) continue;
    for (const PlacedEvent& placed : events->single) take(placed);
    if (!events->hasSeries) continue;
    const auto text = textOfFile(folder + "/" + name);
    for (const PlacedEvent& placed : repetitionsIn(region_, text.value_or(""), from, to)) take(placed);
  }
  forgetUnseen(folder);
  std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.start < b.start; });
  return found;
}

std::optional<std::string> FolderCalendarStore::textOfFile(const std::string& path) {
  Result<std::string> text = files_.read(path);
  if (text) return std::move(*text);
  if (files_.exists(path)) log_.diagnostic("Cannot read " + text.error());
  return std::nullopt;
}

/// Null when it holds none. A file that cannot be looked at by its state is read each time.
const EventsOfText* FolderCalendarStore::eventsOfFile(const std::string& path) {
  struct stat now {};
  const bool hasStamp = ::stat(path.c_str(), &now) == 0;
  const auto known = known_.find(path);
  if (hasStamp && known != known_.end() && sameStamp(known->second.stamp, now)) {
    known->second.seen = true;
    return &known->second.events;
  }
  const auto text = textOfFile(path);
  if (!text) return nullptr;
  std::optional<EventsOfText> events = eventsIn(region_, *text);
  if (!events) log_.diagnostic("Not a calendar file, left as it is: " + path);
  KnownFile& kept = known_[path];
  kept = {now, std::move(events).value_or(EventsOfText()), true};
  return &kept.events;
}

void FolderCalendarStore::forgetUnseen(const std::string& folder) {
  for (auto entry = known_.begin(); entry != known_.end();) {
    const bool wasSeen = std::exchange(entry->second.seen, false);
    const bool isGone = !wasSeen && entry->first.starts_with(folder + "/");
    entry = isGone ? known_.erase(entry) : std::next(entry);
  }
}

}  // namespace tallyvane
