#include "freedesktop/PosixFileStore.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "freedesktop/FileDescriptor.h"
#include "freedesktop/FolderTurn.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

/// Reads to the end. One byte more than the expected size is asked for, so that one call both fills the string and
/// sees the end of a file that does not grow.
Result<std::string> contentOf(const FileDescriptor& file, std::size_t expected, const std::string& path) {
  std::string bytes(expected + 1, '\0');
  std::size_t filled = 0;
  for (;;) {
    const ssize_t count =
        uninterrupted([&] { return ::read(file.number(), bytes.data() + filled, bytes.size() - filled); });
    if (count < 0) return systemError(path);
    filled += static_cast<std::size_t>(count);
    if (filled < bytes.size()) break;
    if (filled > PosixFileStore::maximumFileBytes) return systemError(path, EFBIG);
    bytes.resize(2 * filled);
  }
  bytes.resize(filled);
  return bytes;
}

/// The path itself, or what it names in the end when it is a symbolic link, whether or not that is there yet.
Result<std::string> linkedFile(std::string path) {
  constexpr int mostLinks = 40;
  for (int followed = 0; followed <= mostLinks; ++followed) {
    std::error_code error;
    const std::filesystem::path link = std::filesystem::read_symlink(path, error);
    if (error) return path;
    path = link.is_absolute() ? link.string() : parentOf(path) + "/" + link.string();
  }
  return systemError(path, ELOOP);
}

struct OpenFile {
  FileDescriptor descriptor;
  std::size_t size;
};

Result<OpenFile> opened(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  FileDescriptor file(
      uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
  if (!file) return systemError(path);
  struct stat status {};
  if (::fstat(file.number(), &status) != 0) return systemError(path);
  if (S_ISDIR(status.st_mode)) return systemError(path, EISDIR);
  if (!S_ISREG(status.st_mode)) return Error{path + ": not a regular file"};
  return OpenFile{std::move(file), static_cast<std::size_t>(status.st_size)};
}

}  // namespace

Result<std::string> PosixFileStore::read(const std::string& path) {
  const Result<OpenFile> file = opened(path);
  if (!file) return Error{file.error()};
  if (file->size > maximumFileBytes) return systemError(path, EFBIG);
  return contentOf(file->descriptor, file->size, path);
}

Result<std::string> PosixFileStore::readPart(const std::string& path, std::uint64_t offset, std::size_t count) {
  const Result<OpenFile> file = opened(path);
  if (!file) return Error{file.error()};
  std::string bytes(count, '\0');
  const ssize_t got = uninterrupted(
      [&] { return ::pread(file->descriptor.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
  if (got < 0) return systemError(path);
  bytes.resize(static_cast<std::size_t>(got));
  return bytes;
}

Result<> PosixFileStore::save(const std::string& path, std::string_view bytes, Durability durability) {
  if (auto error = refusal(path)) return *error;
  const Result<std::string> target = linkedFile(path);
  if (!target) return Error{target.error()};
  Result<FolderTurn> turn = FolderTurn::take(parentOf(*target));
  if (!turn) return Error{*target + ": " + turn.error()};
  return turn->replace(nameOf(*target), bytes, durability);
}

bool PosixFileStore::exists(const std::string& path) {
  struct stat status {};
  return !refusal(path) && ::stat(path.c_str(), &status) == 0;
}

bool PosixFileStore::isFolder(const std::string& path) {
  struct stat status {};
  return !refusal(path) && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Result<> PosixFileStore::createFolder(const std::string& path) {
  if (auto error = refusal(path)) return *error;
  if (isFolder(path)) return {};
  const std::string folder = withoutTrailingSlashes(path);
  if (::mkdir(folder.c_str(), 0700) == 0) return {};
  // Another program may have made it meanwhile.
  if (errno == EEXIST) return isFolder(folder) ? Result<>() : systemError(folder, ENOTDIR);
  if (errno != ENOENT) return systemError(folder);
  if (Result<> parent = createFolder(parentOf(folder)); !parent) return parent;
  if (::mkdir(folder.c_str(), 0700) == 0 || isFolder(folder)) return {};
  return systemError(folder);
}

Result<std::vector<std::string>> PosixFileStore::list(const std::string& folder) {
  if (auto error = refusal(folder)) return *error;
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (!isTemporaryName(name)) names.push_back(std::move(name));
  }
  if (error) return systemError(folder, error.value());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tallyvane
