#include "foundation/FileUrl.h"
#include "foundation/Paths.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBillsLoader.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

/// Created with the folders that lead to it; a failure shows in the reads and writes that follow.
std::string createdFolder(FileStore& files, std::string path) {
  (void)files.createFolder(path);
  return path;
}

}  // namespace

std::optional<std::string> QMBillsLoader::tallyvaneDirectory() {
  FileStore& files = platform_.files;
  if (!boolSetting(platform_.defaults, key::CustomLocationEnabled)) {
    return createdFolder(files, files.applicationSupportFolder() + "/Tallyvane/" + std::string(dataFolderName));
  }
  auto cached = settingOf<std::string>(platform_.defaults, key::CustomLocationTempPath);
  // Who switches a location on sets the cache to "", or there is none; and what is cached is not checked. Deliberate.
  if (!cached || !cached->empty()) return cached;

  std::optional<std::string> path = dataFolderOfBookmark();
  // What fails to be cached is only resolved again.
  if (path) {
    (void)platform_.defaults.set(key::CustomLocationTempPath, *path);
  } else {
    (void)platform_.defaults.remove(key::CustomLocationTempPath);
  }
  return path;
}

std::optional<std::string> QMBillsLoader::dataFolderOfBookmark() {
  const std::optional<std::string> folder = resolvedBookmark();
  if (!folder) return std::nullopt;
  platform_.bookmarks.startAccessing(*folder);
  if (boolSetting(platform_.defaults, key::DropboxSyncEnabled)) {
    return joined(*folder, "Apps/Tallyvane/" + std::string(dataFolderName));
  }
  // A bookmark of the data folder itself gives no path; deliberate.
  if (nameOf(withoutTrailingSlashes(*folder)) == dataFolderName) return std::nullopt;
  return joined(*folder, dataFolderName);
}

std::optional<std::string> QMBillsLoader::resolvedBookmark() {
  platform_.log.line("Resolving Bookmark");
  const auto bookmark = settingOf<Data>(platform_.defaults, key::CustomLocationBookmark);
  return bookmark ? platform_.bookmarks.resolve(*bookmark) : std::nullopt;
}

std::optional<std::string> QMBillsLoader::tallyvaneDropboxFolder() {
  if (!boolSetting(platform_.defaults, key::CustomLocationEnabled)) return std::string();
  std::optional<std::string> folder = resolvedBookmark();
  platform_.log.line("Final URL: " + (folder ? fileUrlOf(joined(*folder, "")) : "(null)"));
  return folder;
}

std::string QMBillsLoader::tallyvaneBackupPathMac() {
  return createdFolder(platform_.files, platform_.files.applicationSupportFolder() + "/Tallyvane");
}

std::string QMBillsLoader::tallyvaneBackupPathPhone() {
  return createdFolder(platform_.files, platform_.files.applicationSupportFolder() + "/com.Quillmoor.Tallyvane-Touch");
}

}  // namespace tallyvane
