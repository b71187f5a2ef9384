// The one place where property-list files are read and saved.
#pragma once

#include <optional>
#include <string>

#include "foundation/PropertyList.h"
#include "platform/FileStore.h"
#include "platform/Log.h"

namespace tallyvane {

/// The file's root when it is a property list whose root has type T (Dictionary or Array). A file that is not there is
/// nothing; one that is there but cannot be used is nothing and a diagnostic that names it, and stays as it is.
template <typename T>
[[nodiscard]] std::optional<T> readPropertyListFile(FileStore& files, Log& log, const std::string& path,
                                                    PropertyListLimits limits = {}) {
  Result<std::string> bytes = files.read(path);
  if (!bytes) {
    if (files.exists(path)) log.diagnostic("Cannot read " + bytes.error());
    return std::nullopt;
  }
  Result<Value> root = readPropertyList(*bytes, limits);
  if (!root) {
    log.diagnostic("Not a property list, left as it is: " + path + ": " + root.error());
    return std::nullopt;
  }
  T* content = root->template get<T>();
  if (content == nullptr) {
    log.diagnostic("Unexpected kind of property list, left as it is: " + path);
    return std::nullopt;
  }
  return std::move(*content);
}

/// Refuses what would be too large to be read again.
inline Result<> savePropertyListFile(FileStore& files, const std::string& path, const Value& root,
                                     Durability durability = Durability::synced, PropertyListLimits limits = {}) {
  const std::string bytes = writePropertyList(root);
  if (bytes.size() > limits.bytes) return Error{path + ": too large to be saved"};
  return files.save(path, bytes, durability);
}

}  // namespace tallyvane
