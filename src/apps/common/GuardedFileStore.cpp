#include "common/GuardedFileStore.h"

#include <utility>

#include "common/Sentences.h"
#include "foundation/PropertyList.h"
#include "freedesktop/SetAside.h"

namespace tallyvane::programs {

namespace {

Error refused(const std::string& path) {
  return Error{sentence("{}: not changed, because an earlier save failed", path)};
}

/// Whether both are property lists of the same kind, dictionary or array: one of another kind cannot be read for what
/// it should be, and would be lost without anybody having looked at it.
bool isReplaceableBy(std::string_view earlier, std::string_view later) {
  const Result<Value> before = readPropertyList(earlier);
  // What is saved is in the canonical form, whose root's tag says its kind without another reading.
  const auto holds = [&](std::string_view root) {
    return later.find("<plist version=\"1.0\">\n" + std::string(root)) < 64;
  };
  return before && ((before->is<Dictionary>() && holds("<dict")) || (before->is<Array>() && holds("<array")));
}

}  // namespace

void GuardedFileStore::begin() {
  operating_ = true;
  firstError_.clear();
  forget();
}

Result<> GuardedFileStore::finish() {
  operating_ = false;
  const std::string error = std::exchange(firstError_, {});
  if (!error.empty()) return Error{error + putBack()};
  forget();
  return {};
}

Result<> GuardedFileStore::abandon() {
  operating_ = false;
  firstError_.clear();
  const std::string error = putBack();
  return error.empty() ? Result<>() : Error{translated("the files could not all be put back") + error};
}

void GuardedFileStore::forget() {
  unread_.clear();
  undo_.clear();
  earlier_.clear();
}

/// The last change first; what failed, each clause with its separator.
std::string GuardedFileStore::putBack() {
  std::string failures;
  earlier_.clear();
  const std::list<Undo> undo = std::exchange(undo_, {});
  for (auto step = undo.rbegin(); step != undo.rend(); ++step) {
    if (Result<> done = (*step)(); !done) failures += "; " + sentence("could not be put back: {}", done.error());
  }
  return failures;
}

Result<std::string> GuardedFileStore::read(const std::string& path) {
  Result<std::string> bytes = inner_.read(path);
  if (!bytes && inner_.exists(path)) {
    unread_.insert_or_assign(path, bytes.error());
  } else if (!operating_) {
    unread_.erase(path);
  }
  return bytes;
}

Result<> GuardedFileStore::save(const std::string& path, std::string_view bytes, Durability durability) {
  if (hasFailed()) return refused(path);
  Result<> saved = saveGuarded(path, bytes, durability);
  if (!saved && operating_) firstError_ = saved.error();
  return saved;
}

Result<> GuardedFileStore::saveGuarded(const std::string& path, std::string_view bytes, Durability durability) {
  if (const auto unread = unread_.find(path); unread != unread_.end()) return Error{unread->second};
  Result<std::string> earlier = inner_.read(path);
  if (!earlier) {
    if (inner_.exists(path)) return Error{earlier.error()};
    return changedBySave(inner_.save(path, bytes, durability), path, 0, removing(path));
  }
  if (path.ends_with(".plist") && *earlier != bytes && !isReplaceableBy(*earlier, bytes)) {
    if (Result<> kept = setAside(inner_, log_, path); !kept) return kept;
  }
  const std::size_t size = earlier->size();
  return changedBySave(inner_.save(path, bytes, durability), path, size, savingAgain(path, std::move(*earlier)));
}

Result<> GuardedFileStore::copy(const std::string& from, const std::string& to) {
  if (hasFailed()) return refused(to);
  const bool isFolder = inner_.isFolder(from);
  return changed(inner_.copy(from, to), isFolder ? Undo() : removing(to));
}

Result<> GuardedFileStore::move(const std::string& from, const std::string& to) {
  if (hasFailed()) return refused(from);
  earlier_.clear();
  const bool isFolder = inner_.isFolder(from);
  return changed(
      inner_.move(from, to), isFolder ? Undo() : [this, from, to] { return inner_.move(to, from); });
}

Result<> GuardedFileStore::remove(const std::string& path) {
  if (hasFailed()) return refused(path);
  earlier_.clear();
  Result<std::string> earlier = operating_ ? inner_.read(path) : Error{};
  return changed(inner_.remove(path), earlier ? savingAgain(path, std::move(*earlier)) : Undo());
}

GuardedFileStore::Undo GuardedFileStore::savingAgain(const std::string& path, std::string bytes) {
  return [this, path, bytes = std::move(bytes)] { return inner_.save(path, bytes); };
}

GuardedFileStore::Undo GuardedFileStore::removing(const std::string& path) {
  return [this, path] { return inner_.remove(path); };
}

Result<> GuardedFileStore::changed(Result<> outcome, Undo undo) {
  if (outcome && operating_ && undo) undo_.push_back(std::move(undo));
  return outcome;
}

Result<> GuardedFileStore::changedBySave(Result<> outcome, const std::string& path, std::size_t earlierSize,
                                         const Undo& undo) {
  if (!outcome || !operating_) return outcome;
  const auto first = earlier_.find(path);
  if (first != earlier_.end() && first->second.size <= earlierSize) {
    undo_.splice(undo_.end(), undo_, first->second.undo);
  } else {
    undo_.push_back(undo);
    earlier_.insert_or_assign(path, Earlier{std::prev(undo_.end()), earlierSize});
  }
  return outcome;
}

}  // namespace tallyvane::programs
