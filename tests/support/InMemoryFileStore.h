// Files in memory, and a decorator that makes chosen calls fail.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/PropertyList.h"
#include "platform/FileStore.h"

namespace tallyvane {

// What a failing comparison shows.
inline void PrintTo(const Value& value, std::ostream* out) { *out << writePropertyList(value); }
inline void PrintTo(const Dictionary& dictionary, std::ostream* out) { *out << writePropertyList(dictionary); }

}  // namespace tallyvane

namespace tallyvane::testing {

class InMemoryFileStore : public FileStore {
 public:
  [[nodiscard]] Result<std::string> read(const std::string& path) override {
    ++reads;
    const auto found = content.find(path);
    if (found == content.end()) return Error{path + ": No such file or directory"};
    return found->second;
  }
  Result<> save(const std::string& path, std::string_view bytes, Durability /*durability*/) override {
    if (!path.starts_with('/')) return Error{"'" + path + "': not an absolute path"};
    if (!isFolder(parent(path))) return Error{path + ": No such file or directory"};
    if (isFolder(path)) return Error{path + ": Is a directory"};
    content.insert_or_assign(path, std::string(bytes));
    saved.push_back(path);
    return {};
  }
  [[nodiscard]] Result<std::string> readPart(const std::string& path, std::uint64_t offset,
                                             std::size_t count) override {
    const auto found = content.find(path);
    if (found == content.end()) return Error{path + ": No such file or directory"};
    return offset < found->second.size() ? found->second.substr(offset, count) : std::string();
  }
  [[nodiscard]] Result<std::string> makeTemporary() override {
    std::string path = "/tmp/" + std::to_string(++temporaries_);
    content[path];
    return path;
  }
  Result<> append(const std::string& temporary, std::string_view bytes) override {
    if (!content.contains(temporary)) return Error{temporary + ": No such file or directory"};
    content[temporary] += bytes;
    return {};
  }
  [[nodiscard]] bool exists(const std::string& path) override { return content.contains(path) || isFolder(path); }
  [[nodiscard]] bool isFolder(const std::string& path) override { return folders.contains(path); }
  [[nodiscard]] bool liesIn(const std::string& path, const std::string& folder) override {
    return path.starts_with('/') && folder.starts_with('/') && isAtOrBelow(normal(path), normal(folder));
  }
  Result<> createFolder(const std::string& path) override {
    if (!path.starts_with('/')) return Error{"'" + path + "': not an absolute path"};
    for (std::string folder = path; folder.size() > 1; folder = parent(folder)) {
      if (content.contains(folder)) return Error{folder + ": Not a directory"};
    }
    for (std::string folder = path; folder.size() > 1; folder = parent(folder)) folders.insert(folder);
    return {};
  }
  [[nodiscard]] Result<std::vector<std::string>> list(const std::string& folder) override {
    if (!isFolder(folder)) return Error{folder + ": No such file or directory"};
    std::set<std::string> names;
    const auto note = [&](const std::string& path) {
      if (path != "/" && parent(path) == folder) names.insert(path.substr(path.rfind('/') + 1));
    };
    for (const auto& [path, bytes] : content) note(path);
    for (const std::string& path : folders) note(path);
    return std::vector<std::string>(names.begin(), names.end());
  }
  Result<> copy(const std::string& from, const std::string& to) override {
    if (!exists(from)) return Error{from + ": No such file or directory"};
    if (!to.starts_with('/') || exists(to)) return Error{to + ": File exists"};
    if (!isFolder(parent(to))) return Error{to + ": No such file or directory"};
    if (to.starts_with(from + "/")) return Error{to + ": lies inside " + from};
    std::map<std::string, std::string> files;
    std::set<std::string> made;
    for (const auto& [path, bytes] : content) {
      if (isAtOrBelow(path, from)) files[to + path.substr(from.size())] = bytes;
    }
    for (const std::string& path : folders) {
      if (isAtOrBelow(path, from)) made.insert(to + path.substr(from.size()));
    }
    std::uint64_t bytes = 0;
    for (const auto& [path, file] : files) {
      bytes += file.size();
      if (tellCopied_) tellCopied_(bytes);
    }
    content.merge(files);
    folders.merge(made);
    return {};
  }
  void tellCopied(std::function<void(std::uint64_t)> tell) override { tellCopied_ = std::move(tell); }
  Result<> move(const std::string& from, const std::string& to) override {
    Result<> copied = copy(from, to);
    return copied ? remove(from) : copied;
  }
  [[nodiscard]] Result<std::uint64_t> copySize(const std::string& path) override {
    if (!exists(path)) return Error{path + ": No such file or directory"};
    std::uint64_t size = 0;
    for (const auto& [file, bytes] : content) size += isAtOrBelow(file, path) ? bytes.size() : 0;
    return size;
  }
  [[nodiscard]] Result<std::uint64_t> freeSpace(const std::string& folder) override {
    if (!isFolder(folder)) return Error{folder + ": No such file or directory"};
    return space;
  }
  Result<> remove(const std::string& path) override {
    if (!exists(path)) return Error{path + ": No such file or directory"};
    std::erase_if(content, [&](const auto& entry) { return isAtOrBelow(entry.first, path); });
    std::erase_if(folders, [&](const auto& folder) { return isAtOrBelow(folder, path); });
    return {};
  }
  [[nodiscard]] std::string applicationSupportFolder() override { return "/home/ada/.local/share"; }

  /// The file's root as values, for looking at what was written; an empty string when it is no property list.
  [[nodiscard]] Value plist(const std::string& path) {
    const auto found = content.find(path);
    if (found == content.end()) return Value("");
    auto root = readPropertyList(found->second);
    return root ? *root : Value("");
  }
  void putPlist(const std::string& path, const Value& root) {
    (void)createFolder(parent(path));
    content.insert_or_assign(path, writePropertyList(root));
  }

  std::map<std::string, std::string> content;  ///< by absolute path
  std::set<std::string> folders{"/"};
  std::vector<std::string> saved;  ///< paths in the order of their saves
  int reads = 0;
  std::uint64_t space = 1'000'000'000;  ///< that is free, everywhere

  /// Temporary files that nobody has removed yet.
  [[nodiscard]] int temporariesLeft() const {
    return static_cast<int>(std::count_if(content.begin(), content.end(),
                                          [](const auto& file) { return file.first.starts_with("/tmp/"); }));
  }

  [[nodiscard]] static std::string parent(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
  }

 private:
  std::function<void(std::uint64_t)> tellCopied_;
  int temporaries_ = 0;
  static std::string normal(const std::string& path) {
    std::string text = std::filesystem::path(path).lexically_normal().string();
    while (text.size() > 1 && text.ends_with('/')) text.pop_back();
    return text;
  }
  static bool isAtOrBelow(const std::string& path, const std::string& root) {
    return path == root || path.starts_with(root + "/");
  }
};

/// What a call asks of the disk.
enum class Access { read, change, makeFolder };

/// Hands every call on to another store, unless a test's own rule makes it fail: the rule is asked before each, and may
/// give the system's reason for a failure, or throw as if the program ended there.
class FaultyFileStore : public FileStore {
 public:
  using Fault = std::function<std::optional<std::string>(Access)>;

  FaultyFileStore(FileStore& inner, Fault fault) : inner_(inner), fault_(std::move(fault)) {}

  [[nodiscard]] Result<std::string> read(const std::string& path) override {
    return unless<Result<std::string>>(Access::read, path, [&] { return inner_.read(path); });
  }
  Result<> save(const std::string& path, std::string_view bytes, Durability durability) override {
    return unless<Result<>>(Access::change, path, [&] { return inner_.save(path, bytes, durability); });
  }
  [[nodiscard]] Result<std::string> readPart(const std::string& path, std::uint64_t offset,
                                             std::size_t count) override {
    return unless<Result<std::string>>(Access::read, path, [&] { return inner_.readPart(path, offset, count); });
  }
  [[nodiscard]] Result<std::string> makeTemporary() override {
    return unless<Result<std::string>>(Access::change, "/tmp", [&] { return inner_.makeTemporary(); });
  }
  Result<> append(const std::string& temporary, std::string_view bytes) override {
    return unless<Result<>>(Access::change, temporary, [&] { return inner_.append(temporary, bytes); });
  }
  [[nodiscard]] bool exists(const std::string& path) override { return inner_.exists(path); }
  [[nodiscard]] bool isFolder(const std::string& path) override { return inner_.isFolder(path); }
  [[nodiscard]] bool liesIn(const std::string& path, const std::string& folder) override {
    return inner_.liesIn(path, folder);
  }
  Result<> createFolder(const std::string& path) override {
    if (isFolder(path)) return inner_.createFolder(path);
    return unless<Result<>>(Access::makeFolder, path, [&] { return inner_.createFolder(path); });
  }
  [[nodiscard]] Result<std::vector<std::string>> list(const std::string& folder) override {
    return unless<Result<std::vector<std::string>>>(Access::read, folder, [&] { return inner_.list(folder); });
  }
  Result<> copy(const std::string& from, const std::string& to) override {
    return unless<Result<>>(Access::change, to, [&] { return inner_.copy(from, to); });
  }
  void tellCopied(std::function<void(std::uint64_t)> tell) override { inner_.tellCopied(std::move(tell)); }
  Result<> move(const std::string& from, const std::string& to) override {
    return unless<Result<>>(Access::change, to, [&] { return inner_.move(from, to); });
  }
  [[nodiscard]] Result<std::uint64_t> copySize(const std::string& path) override {
    return unless<Result<std::uint64_t>>(Access::read, path, [&] { return inner_.copySize(path); });
  }
  [[nodiscard]] Result<std::uint64_t> freeSpace(const std::string& folder) override {
    return unless<Result<std::uint64_t>>(Access::read, folder, [&] { return inner_.freeSpace(folder); });
  }
  Result<> remove(const std::string& path) override {
    return unless<Result<>>(Access::change, path, [&] { return inner_.remove(path); });
  }
  [[nodiscard]] std::string applicationSupportFolder() override { return inner_.applicationSupportFolder(); }

 private:
  template <typename Outcome, typename Call>
  Outcome unless(Access access, const std::string& path, Call call) {
    if (const auto reason = fault_(access)) return Error{path + ": " + *reason};
    return call();
  }
  FileStore& inner_;
  Fault fault_;
};

/// Whether only the n-th call fails, or all from there on: to the files it is then as if the program had ended.
enum class Failing { once, fromThereOn };

/// The n-th call that would change something other than make a folder fails (1 is the first).
class FailingFileStore : public FaultyFileStore {
 public:
  FailingFileStore(FileStore& inner, int failingCall, Failing failing = Failing::once)
      : FaultyFileStore(inner, [this](Access access) { return faultAt(access); }),
        failingCall_(failingCall),
        failing_(failing) {}

  [[nodiscard]] int calls() const { return calls_; }

 private:
  std::optional<std::string> faultAt(Access access) {
    if (access != Access::change) return std::nullopt;
    ++calls_;
    const bool fails = failing_ == Failing::once ? calls_ == failingCall_ : calls_ >= failingCall_;
    return fails ? std::optional<std::string>("No space left on device") : std::nullopt;
  }
  int failingCall_;
  Failing failing_;
  int calls_ = 0;
};

}  // namespace tallyvane::testing
