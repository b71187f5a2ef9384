#pragma once

#include <sys/stat.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/Region.h"
#include "freedesktop/EventText.h"
#include "platform/CalendarStore.h"
#include "platform/Clock.h"
#include "platform/FileStore.h"
#include "platform/Log.h"

namespace tallyvane {

/// Calendars as a folder of collections: each folder in the root folder is one, titled by its file "displayname" or
/// else by its own name, with an iCalendar file for each event. Other programs show and edit the same files or carry
/// them to a server. Files and properties that are not ours stay as they are, byte by byte; a file that is no calendar
/// is passed over and said in the log.
///
/// An event's file and UID follow from its calendar, title and first day: an event that is removed and saved again is
/// the same event to other programs, and nothing is carried to a server when nothing has changed. A file that is there
/// is never replaced by a new event.
///
/// What was read is kept in memory until the file changes.
class FolderCalendarStore : public CalendarStore {
 public:
  /// Absolute path of the root folder, asked at every use; it need not exist.
  using Root = std::function<std::string()>;

  /// All references outlive it.
  FolderCalendarStore(Root root, FileStore& files, Clock& clock, const Region& region, Log& log)
      : root_(std::move(root)), files_(files), clock_(clock), region_(region), log_(log) {}

  [[nodiscard]] std::vector<EventCalendar> calendars() override;
  /// The root folder, by its path.
  [[nodiscard]] std::vector<CalendarSource> sources() override { return {{root_(), 0}}; }
  Result<EventCalendar> save(const EventCalendar& calendar) override;
  [[nodiscard]] CalendarEvent newEvent() override { return {}; }
  Result<> save(const CalendarEvent& event) override;
  Result<> remove(const CalendarEvent& event) override;
  [[nodiscard]] std::vector<CalendarEvent> events(const std::string& calendar, Date from, Date to) override;

 private:
  struct KnownFile {
    struct stat stamp {};
    EventsOfText events;
    bool seen = false;
  };

  [[nodiscard]] std::string folderOf(const std::string& calendar) const { return root_() + "/" + calendar; }
  [[nodiscard]] std::string freeFolderName(const std::string& title);
  [[nodiscard]] std::string freeUid(const CalendarEvent& event);
  [[nodiscard]] const EventsOfText* eventsOfFile(const std::string& path);
  [[nodiscard]] std::optional<std::string> textOfFile(const std::string& path);
  void forgetUnseen(const std::string& folder);

  Root root_;
  FileStore& files_;
  Clock& clock_;
  const Region& region_;
  Log& log_;
  std::map<std::string, KnownFile> known_;  ///< by path
};

}  // namespace tallyvane
