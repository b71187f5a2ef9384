#include "freedesktop/SharedPropertyList.h"

#include <utility>

#include "freedesktop/PosixPaths.h"
#include "freedesktop/SetAside.h"
#include "platform/PropertyListFile.h"

namespace tallyvane {

namespace {

bool sameMoment(const timespec& left, const timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

bool sameState(const struct stat& left, const struct stat& right) {
  return left.st_ino == right.st_ino && left.st_dev == right.st_dev && left.st_size == right.st_size &&
         sameMoment(left.st_mtim, right.st_mtim) && sameMoment(left.st_ctim, right.st_ctim);
}

}  // namespace

SharedPropertyList::SharedPropertyList(std::string path, FileStore& files, Log& log, Durability durability)
    : path_(std::move(path)), files_(files), log_(log), durability_(durability) {}

bool SharedPropertyList::isCurrent() const {
  struct stat now {};
  const bool there = ::stat(path_.c_str(), &now) == 0;
  return known_ && there == static_cast<bool>(pinned_) && (!there || sameState(now, stamp_));
}

const Dictionary& SharedPropertyList::content() {
  return working_ && working_->lock ? working_->content : fileContent();
}

const Dictionary& SharedPropertyList::fileContent() {
  if (isCurrent()) return content_;
  // The state is taken before the content: what changes in between is seen as a change at the next use.
  pinned_ = FileDescriptor(::open(path_.c_str(), O_PATH | O_CLOEXEC));
  if (pinned_ && ::fstat(pinned_.number(), &stamp_) != 0) pinned_ = FileDescriptor();
  std::optional<Dictionary> read = readPropertyListFile<Dictionary>(files_, log_, path_, collectionLimits);
  readable_ = read.has_value();
  content_ = readable_ ? std::move(*read) : Dictionary();
  known_ = true;
  return content_;
}

Result<> SharedPropertyList::set(std::string_view key, const Value& value) {
  return change([&](Dictionary& entries) {
    const Value* present = entries.find(key);
    if (present != nullptr && *present == value) return false;
    entries.set(key, value);
    return true;
  });
}

Result<> SharedPropertyList::remove(std::string_view key) {
  return change([&](Dictionary& entries) { return entries.erase(key); });
}

Result<FileDescriptor> SharedPropertyList::lock() {
  if (auto error = refusal(path_)) return *error;
  if (Result<> created = files_.createFolder(parentOf(path_)); !created) return Error{created.error()};
  return openLocked(path_ + ".lock");
}

Result<> SharedPropertyList::change(const Edit& edit) {
  if (working_) return changeWorking(edit);
  // Looked at first without the lock: a change of nothing leaves no trace, not even a lock file.
  Dictionary changed = fileContent();
  if (!edit(changed)) return {};
  const Result<FileDescriptor> locked = lock();
  if (!locked) return Error{locked.error()};
  changed = fileContent();
  if (!edit(changed)) return {};
  return save(changed);
}

/// What an edit does that changes nothing does no harm to what is saved.
Result<> SharedPropertyList::changeWorking(const Edit& edit) {
  if (!working_->lock) {
    Dictionary tried = fileContent();
    if (!edit(tried)) return {};
    Result<FileDescriptor> locked = lock();
    if (!locked) {
      working_->failure = Error{locked.error()};
      return *working_->failure;
    }
    working_->lock = std::move(*locked);
    working_->content = fileContent();
  }
  (void)edit(working_->content);
  return {};
}

Result<> SharedPropertyList::changeTogether(const std::function<void()>& changes) {
  working_.emplace();
  try {
    changes();
  } catch (...) {
    working_.reset();
    throw;
  }
  const Working done = *std::exchange(working_, std::nullopt);
  if (done.failure) return *done.failure;
  return done.lock ? save(done.content) : Result<>();
}

Result<> SharedPropertyList::save(const Dictionary& changed) {
  if (!readable_ && files_.exists(path_)) {
    if (Result<> kept = setAside(files_, log_, path_); !kept) return kept;
  }
  forget();
  return savePropertyListFile(files_, path_, changed, durability_, collectionLimits);
}

}  // namespace tallyvane
