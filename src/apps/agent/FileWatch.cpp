#include "agent/FileWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "freedesktop/PosixPaths.h"

namespace tallyvane::agent {

namespace {

constexpr std::uint32_t ownEvents = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t nameEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr std::uint32_t contentEvents = ownEvents | nameEvents | IN_CLOSE_WRITE;
/// What concerns the folder itself, or that the system lost count.
constexpr std::uint32_t eventsWithoutName = ownEvents | IN_IGNORED | IN_Q_OVERFLOW | IN_UNMOUNT;

}  // namespace

FileWatch::FileWatch() : file_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (!file_) throw std::system_error(errno, std::generic_category(), "files cannot be watched");
}

void FileWatch::watch(const std::vector<WatchedFolder>& folders) {
  for (auto at = watches_.begin(); at != watches_.end(); at = watches_.upper_bound(at->first))
    ::inotify_rm_watch(file_.number(), at->first);
  watches_.clear();
  for (const WatchedFolder& folder : folders) {
    watchWayTo(folder.path, add(folder.path, contentEvents, folder.matters));
  }
}

/// Watches the folders above: each may be moved away with all below it, and where the way ends so far, its next name
/// may appear.
void FileWatch::watchWayTo(const std::string& path, bool isThere) {
  for (std::string below = path; below != "/"; below = parentOf(below)) {
    const auto isNext = [next = nameOf(below)](std::string_view name) { return name == next; };
    const bool added = add(parentOf(below), isThere ? ownEvents : ownEvents | nameEvents, isNext);
    isThere = isThere || added;
  }
}

bool FileWatch::add(const std::string& path, std::uint32_t events, const Matters& matters) {
  const int watch = ::inotify_add_watch(file_.number(), path.c_str(), events | IN_ONLYDIR | IN_MASK_ADD);
  if (watch < 0) return false;
  watches_.emplace(watch, matters);
  return true;
}

bool FileWatch::takeChanges() {
  alignas(inotify_event) std::array<char, 16 * 1024> buffer;
  bool found = false;
  while (true) {
    const auto size = uninterrupted([&] { return ::read(file_.number(), buffer.data(), buffer.size()); });
    if (size <= 0) return found;
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
      inotify_event event;
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const char* name = buffer.data() + at + sizeof event;
      found |= matters(event.wd, event.mask, event.len == 0 ? std::string_view() : std::string_view(name));
      at += sizeof event + event.len;
    }
  }
}

/// Events of watches that have been replaced are none of ours.
bool FileWatch::matters(int watch, std::uint32_t events, std::string_view name) const {
  if ((events & IN_Q_OVERFLOW) != 0) return true;
  const auto [first, last] = watches_.equal_range(watch);
  for (auto at = first; at != last; ++at) {
    if ((events & eventsWithoutName) != 0 || (!name.empty() && at->second(name))) return true;
  }
  return false;
}

}  // namespace tallyvane::agent
