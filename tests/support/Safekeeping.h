// A person's data folder with a receipt, a backup of it and a disk to move to.
#pragma once

#include "support/CliCommands.h"

namespace tallyvane::testing {

inline const std::string usual = "/home/ada/.local/share/Tallyvane/Tallyvane.tvdata";
inline const std::string onDisk = "/media/disk/Tallyvane.tvdata";

/// What a folder holds, by names relative to it.
inline std::map<std::string, std::string> contentOf(const FakeDesktop& desktop, const std::string& folder) {
  std::map<std::string, std::string> content;
  for (const auto& [path, bytes] : desktop.files.content) {
    if (path.starts_with(folder + "/")) content[path.substr(folder.size())] = bytes;
  }
  return content;
}

struct Safekeeping : CliCommands {
  Safekeeping() { setUp(cli); }
  static void setUp(CliDesktop& cli) {
    (void)cli.desktop.files.createFolder("/media/disk");
    cli.desktop.files.content["/media/rent.pdf"] = "receipt";
    (void)cli.run({"add", "Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
    (void)cli.run({"pay", "Rent", "--receipt", "/media/rent.pdf"});
  }
  /// Where the receipt of the one payment of the one bill in this folder is said to be.
  static std::string receiptIn(CliDesktop& cli, const std::string& folder) {
    const Value index = cli.desktop.files.plist(folder + "/billindex.plist");
    const std::string bid = stringsOf(index.get<Dictionary>()->get<Array>("ActiveBills")).at(0);
    const Value bill = cli.desktop.files.plist(folder + "/" + bid + ".plist");
    const Array* payments = bill.get<Dictionary>()->get<Array>("PaymentList");
    return payments->at(0).get<Dictionary>()->valueOr("Receipt", std::string());
  }
  std::string backup() {
    return "/home/ada/.local/share/Tallyvane/" +
           cli.desktop.defaults.content.valueOr("QMLastBackupUID", std::string("?"));
  }
};

}  // namespace tallyvane::testing
