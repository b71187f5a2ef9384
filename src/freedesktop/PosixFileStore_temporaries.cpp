// Temporary files of PosixFileStore.
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "freedesktop/FileDescriptor.h"
#include "freedesktop/PosixFileStore.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

constexpr std::string_view namePattern = "tallyvane-XXXXXX";
constexpr std::string_view nameStart = namePattern.substr(0, namePattern.size() - 6);

/// A file with such a name that the user has not changed for a day was left by a program that was killed.
bool isLeftOver(const std::string& path, const struct stat& newest) {
  constexpr time_t day = 86'400;
  struct stat status {};
  return nameOf(path).size() == namePattern.size() && nameOf(path).starts_with(nameStart) &&
         ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == newest.st_uid &&
         status.st_mtime < newest.st_mtime - day;
}

void removeLeftOvers(const std::filesystem::path& folder, const struct stat& newest) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (isLeftOver(entry->path().string(), newest)) ::unlink(entry->path().c_str());
  }
}

}  // namespace

Result<std::string> PosixFileStore::makeTemporary() {
  std::error_code none;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(none);
  if (none) return systemError("the folder for temporary files", none.value());
  std::string path = (folder / namePattern).string();
  const FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
  if (!file) return systemError(path);
  struct stat status {};
  if (::fstat(file.number(), &status) == 0) removeLeftOvers(folder, status);
  return path;
}

Result<> PosixFileStore::append(const std::string& temporary, std::string_view bytes) {
  if (auto error = refusal(temporary)) return *error;
  const FileDescriptor file(
      uninterrupted([&] { return ::open(temporary.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW); }));
  if (!file) return systemError(temporary);
  const int failure = writeAll(file, bytes);
  return failure == 0 ? Result<>() : systemError(temporary, failure);
}

}  // namespace tallyvane
