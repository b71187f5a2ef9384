#include "storage/QMDatabaseMover.h"

#include "foundation/Paths.h"
#include "storage/DataFolder.h"

namespace tallyvane {

namespace {

bool isDataFolder(const std::string& path) { return nameOf(path) == dataFolderName; }

/// The data folder that a location means.
std::string dataFolderAt(const std::string& location) {
  const std::string path = withoutTrailingSlashes(location);
  return isDataFolder(path) ? path : joined(path, dataFolderName);
}

/// What is to be moved must not go with what stands in its way.
bool overlap(FileStore& files, const std::string& left, const std::string& right) {
  return files.liesIn(left, right) || files.liesIn(right, left);
}

Error overlapError(const std::string& from, const std::string& to) {
  return Error{from + " and " + to + " are the same place or lie in one another"};
}

}  // namespace

std::string QMDatabaseMover::newPlace(const std::string& location) {
  if (!isDataFolder(withoutTrailingSlashes(location))) platform_.log.line("Adding Tallyvane...");
  return dataFolderAt(location);
}

bool QMDatabaseMover::moveDatabaseToNewLocationFromOriginalLocationOverwrite(const std::string& newLocation,
                                                                             const std::string& original,
                                                                             bool overwrite) {
  const std::string target = newPlace(newLocation);
  const std::string source = withoutTrailingSlashes(original);
  Result<> moved = overlapError(source, target);
  if (!overlap(platform_.files, source, target)) {
    if (overwrite) (void)platform_.files.remove(target);
    moved = platform_.files.move(source, target);
  }
  if (!moved) platform_.log.line(moved.error());
  return static_cast<bool>(moved);
}

bool QMDatabaseMover::copyDatabaseToNewLocationFromOriginalLocationOverwrite(const std::string& newLocation,
                                                                             const std::string& original,
                                                                             bool overwrite) {
  const std::string target = newPlace(newLocation);
  const std::string source = withoutTrailingSlashes(original);
  Result<> outcome = overlapError(source, target);
  if (!overlap(platform_.files, source, target)) {
    const Result<> removed = overwrite ? platform_.files.remove(target) : Result<>();
    const Result<> copied = platform_.files.copy(source, target);
    outcome = copied ? removed : copied;
  }
  if (!outcome) platform_.log.line(outcome.error());
  return static_cast<bool>(outcome);
}

bool QMDatabaseMover::loadDatabaseFromAnotherLocation(const std::string& location) {
  return platform_.files.exists(dataFolderAt(location));
}

bool QMDatabaseMover::resetDatabaseFromStartLocation(const std::string& path) {
  const std::string parent = platform_.files.applicationSupportFolder() + "/Tallyvane";
  const std::string target = joined(parent, dataFolderName);
  const std::string source = withoutTrailingSlashes(path);
  Result<> moved = overlapError(source, target);
  if (!overlap(platform_.files, source, target)) {
    (void)platform_.files.createFolder(parent);
    (void)platform_.files.remove(target);
    moved = platform_.files.move(source, target);
  }
  if (!moved) platform_.log.line("Error: " + moved.error());
  return static_cast<bool>(moved);
}

bool QMDatabaseMover::databaseExistsWithDataAtLocation(const std::string& location) {
  const std::string folder = joined(withoutTrailingSlashes(location), dataFolderName);
  const bool exists = platform_.files.exists(joined(folder, billIndexName));
  platform_.log.line(exists ? "Tallyvane 5 Data Exists Already: 1" : "Tallyvane 5 Data Exists Already: 0");
  return exists;
}

}  // namespace tallyvane
