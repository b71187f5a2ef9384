#include "common/PlaceChange.h"

#include <algorithm>
#include <utility>

#include "common/DataFolderState.h"
#include "common/ReceiptPaths.h"
#include "common/Sentences.h"
#include "freedesktop/PosixPaths.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/QMDatabaseMover.h"
#include "storage/Settings.h"

namespace tallyvane::programs {

namespace {

constexpr std::string_view fromKey = "From";
constexpr std::string_view toKey = "To";
constexpr std::string_view folderKey = "Folder";
constexpr std::string_view dropboxKey = "Dropbox";
constexpr std::string_view carryingKey = "Carrying";

/// The mover says in the log alone why it could not.
struct LastLine : Log {
  explicit LastLine(Log& inner) : log(inner) {}
  void line(std::string_view text) override {
    last = text;
    log.line(text);
  }
  void diagnostic(std::string_view text) override { log.diagnostic(text); }
  Log& log;
  std::string last;
};

Result<> note(const Platform& platform, const PlaceChange& change) {
  Dictionary entry{{std::string(fromKey), change.from}, {std::string(toKey), change.to}};
  if (change.place.folder) entry.set(folderKey, *change.place.folder);
  entry.set(dropboxKey, change.place.dropbox);
  entry.set(carryingKey, static_cast<std::int64_t>(change.carrying));
  return platform.defaults.set(key::PlaceChange, entry);
}

/// What the model's operations take out of the way is empty.
Result<> carry(const Platform& platform, const PlaceChange& change) {
  FileStore& files = platform.files;
  if (Result<> made = files.createFolder(parentOf(change.to)); !made) return made;
  LastLine log(platform.log);
  const Platform logged = platform.loggingTo(log);
  QMDatabaseMover mover{logged};
  const bool replaces = isEmptyFolder(files, change.to);
  const bool carried =
      change.carrying == Carrying::copy
          ? mover.copyDatabaseToNewLocationFromOriginalLocationOverwrite(change.to, change.from, replaces)
      : change.place.folder
          ? mover.moveDatabaseToNewLocationFromOriginalLocationOverwrite(change.to, change.from, replaces)
          : mover.resetDatabaseFromStartLocation(change.from);
  return carried ? Result<>() : Error{log.last};
}

/// The cached path is emptied last or, where the user's own location comes to be switched on, just before: until then
/// every program uses the old folder.
Result<> switchSettings(const Platform& platform, const Place& place) {
  UserDefaults& defaults = platform.defaults;
  Result<> stored;
  const auto set = [&](std::string_view key, const Value& value) {
    if (stored) stored = defaults.set(key, value);
  };
  if (place.folder) {
    set(key::CustomLocationBookmark, platform.bookmarks.bookmark(*place.folder));
    set(key::DropboxSyncEnabled, place.dropbox);
  }
  set(key::CustomLocationTempPath, "");
  set(key::CustomLocationEnabled, place.folder.has_value());
  return stored;
}

/// What a copy or a removal that was broken off has left beside a folder that is not there.
void clearBeside(FileStore& files, const std::string& folder) {
  if (!files.exists(folder)) (void)files.remove(folder);
}

/// Of a folder that has moved nothing is left, unless the change was interrupted between its copy and its removal. What
/// is not at the new place, too, is never removed.
Result<> removeLeftover(const Platform& platform, const PlaceChange& change) {
  FileStore& files = platform.files;
  if (change.carrying != Carrying::move || files.liesIn(change.to, change.from)) return {};
  clearBeside(files, change.from);
  const Result<std::vector<std::string>> names = files.list(change.from);
  if (!names) return {};
  for (const std::string& name : *names) {
    if (!files.exists(change.to + "/" + name))
      return Error{sentence("{} stays, because \"{}\" in it is not in {}", change.from, name, change.to)};
  }
  return files.remove(change.from);
}

Result<> settle(const Platform& platform, const PlaceChange& change) {
  if (Result<> switched = switchSettings(platform, change.place); !switched) return switched;
  // The folder at the usual place is made when it is asked for; at the user's own it is there or its disk is not.
  (void)QMBillsLoader{platform}.tallyvaneDirectory();
  if (Result<> followed = haveReceiptsFollow(platform, change.to); !followed) return followed;
  if (Result<> removed = removeLeftover(platform, change); !removed) return removed;
  return platform.defaults.remove(key::PlaceChange);
}

/// A copy or a moved folder appears at the new place in one step; an empty one may have stood there before.
bool hasArrived(const Platform& platform, const PlaceChange& change) {
  FileStore& files = platform.files;
  return files.isFolder(change.to) && (!isEmptyFolder(files, change.to) || !files.exists(change.from));
}

}  // namespace

std::string dataFolderAt(const Platform& platform, const Place& place) {
  const std::string name(dataFolderName);
  if (!place.folder) return platform.files.applicationSupportFolder() + "/Tallyvane/" + name;
  const std::string folder = *place.folder == "/" ? "" : *place.folder;
  return folder + (place.dropbox ? "/Apps/Tallyvane/" : "/") + name;
}

Place currentPlace(const Platform& platform) {
  if (!boolSetting(platform.defaults, key::CustomLocationEnabled)) return {};
  const auto bookmark = settingOf<Data>(platform.defaults, key::CustomLocationBookmark);
  return {bookmark ? platform.bookmarks.resolve(*bookmark) : std::nullopt,
          boolSetting(platform.defaults, key::DropboxSyncEnabled)};
}

Result<> changePlace(const Platform& platform, const Place& place, Carrying carrying) {
  const PlaceChange change{dataFolder(platform), dataFolderAt(platform, place), place, carrying};
  if (Result<> noted = note(platform, change); !noted) return noted;
  const Result<> carried = carrying == Carrying::adopt ? Result<>() : carry(platform, change);
  if (carried) return settle(platform, change);
  (void)platform.defaults.remove(key::PlaceChange);
  return carried;
}

std::optional<PlaceChange> begunPlaceChange(const Platform& platform) {
  const auto entry = settingOf<Dictionary>(platform.defaults, key::PlaceChange);
  if (!entry) return std::nullopt;
  PlaceChange change{entry->valueOr(fromKey, std::string()), entry->valueOr(toKey, std::string()), {}, Carrying::adopt};
  if (const auto* folder = entry->get<std::string>(folderKey)) change.place.folder = *folder;
  change.place.dropbox = entry->valueOr(dropboxKey, false);
  const std::int64_t carrying = entry->valueOr(carryingKey, static_cast<std::int64_t>(Carrying::adopt));
  if (carrying == static_cast<std::int64_t>(Carrying::move)) change.carrying = Carrying::move;
  if (carrying == static_cast<std::int64_t>(Carrying::copy)) change.carrying = Carrying::copy;
  return change;
}

std::string wholeFolderOf(const Platform& platform, const PlaceChange& change) {
  if (hasArrived(platform, change)) return change.to;
  return platform.files.isFolder(change.from) ? change.from : std::string();
}

Result<> finishPlaceChange(const Platform& platform, const PlaceChange& change) {
  const bool isSwitched = QMBillsLoader{platform}.tallyvaneDirectory() != change.from;
  if (!isSwitched && !hasArrived(platform, change)) {
    clearBeside(platform.files, change.to);
    return platform.defaults.remove(key::PlaceChange);
  }
  if (!platform.files.isFolder(change.to))
    return Error{sentence("{} is not there; connect the disk that it is on", change.to)};
  return settle(platform, change);
}

}  // namespace tallyvane::programs
