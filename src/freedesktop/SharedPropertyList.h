#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Value.h"
#include "freedesktop/FileDescriptor.h"
#include "platform/FileStore.h"
#include "platform/Log.h"

namespace tallyvane {

/// A dictionary kept in a property-list file that several programs read and change. It is read once and again when the
/// file has changed. Every change is merged into what the file then holds, under a lock on "PATH.lock", so that two
/// programs never undo each other. The folder is made (0700) at the first change. A file that is there but holds no
/// dictionary reads as empty and is copied aside before a change replaces it.
class SharedPropertyList {
 public:
  SharedPropertyList(std::string path, FileStore& files, Log& log, Durability durability);

  /// What the file holds now. Valid until the next call.
  [[nodiscard]] const Dictionary& content();
  /// Reads again at the next use, even if nothing shows that the file has changed; keeps nothing in memory until then.
  void forget() {
    known_ = false;
    content_ = Dictionary();
  }

  // Each writes nothing when it changes nothing.

  Result<> set(std::string_view key, const Value& value);
  Result<> remove(std::string_view key);
  /// Edits the dictionary and returns whether that changed anything. Called once or twice, the last time on what is
  /// saved.
  using Edit = std::function<bool(Dictionary&)>;
  Result<> change(const Edit& edit);
  /// Runs `changes`, in which the operations above work on one copy under one lock, and saves it once at the end, if
  /// anything has changed; the result is that of saving. When it fails, or `changes` throws, the file is as before.
  Result<> changeTogether(const std::function<void()>& changes);

 private:
  /// What stands in for the file while changes are made together.
  struct Working {
    FileDescriptor lock;  ///< taken by the first change; none: nothing has changed yet
    Dictionary content;
    std::optional<Error> failure;  ///< of the first change that was not made
  };

  [[nodiscard]] bool isCurrent() const;
  [[nodiscard]] const Dictionary& fileContent();
  [[nodiscard]] Result<FileDescriptor> lock();
  [[nodiscard]] Result<> changeWorking(const Edit& edit);
  [[nodiscard]] Result<> save(const Dictionary& changed);

  std::string path_;
  FileStore& files_;
  Log& log_;
  Durability durability_;

  Dictionary content_;
  bool known_ = false;     ///< content_ stands for the file as stamp_ and pinned_ say
  bool readable_ = false;  ///< the file is there and holds a dictionary
  struct stat stamp_ {};
  std::optional<Working> working_;
  FileDescriptor pinned_;  ///< keeps the file's inode number from being given to a later file; none: no file
};

}  // namespace tallyvane
