// A data folder with backups.
#pragma once

#include <gmock/gmock.h>

#include "storage/QMBillsLoader.h"
#include "storage/QMDatabaseMover.h"
#include "support/Bills.h"
#include "support/Matchers.h"

namespace tallyvane::testing {

const std::string backupFolder = "/home/ada/.local/share/Tallyvane";

struct Backup : ::testing::Test {
  Backup() { putActiveBills(desktop, {bill("B1", "Rent", noon(2027, 3, 1))}); }
  /// The names of what is in the backup folder beside the data folder.
  std::vector<std::string> backups() {
    std::vector<std::string> names = *desktop.files.list(backupFolder);
    std::erase(names, "Tallyvane.tvdata");
    return names;
  }
  std::string recorded() { return desktop.defaults.content.valueOr("QMLastBackupUID", std::string()); }
  std::string inBackup(const std::string& name) { return backupFolder + "/" + recorded() + "/" + name; }
  FakeDesktop desktop;
  QMBillsLoader loader{desktop.platform};
};

/// A data folder that moves, and a place for it.
struct Mover : Backup {
  Mover() { (void)desktop.files.createFolder("/media/disk"); }
  bool isAt(const std::string& folder) { return desktop.files.exists(folder + "/B1.plist"); }
  QMDatabaseMover mover{desktop.platform};
};

}  // namespace tallyvane::testing
