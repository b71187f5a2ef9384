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

/// Where the receipts of a folder's bills are said to be.
inline std::vector<std::string> receiptsIn(FakeDesktop& desktop, const std::string& folder) {
  std::vector<std::string> receipts;
  for (const auto& [name, bytes] : contentOf(desktop, folder)) {
    const Value root = desktop.files.plist(folder + name);
    const Array* payments = root.is<Dictionary>() ? root.get<Dictionary>()->get<Array>("PaymentList") : nullptr;
    for (const Value& payment : payments == nullptr ? Array() : *payments) {
      const std::string receipt = payment.get<Dictionary>()->valueOr("Receipt", std::string());
      if (!receipt.empty()) receipts.push_back(receipt);
    }
  }
  return receipts;
}

struct Safekeeping : CliCommands {
  Safekeeping() { setUp(cli); }
  static void setUp(CliDesktop& cli) {
    (void)cli.desktop.files.createFolder("/media/disk");
    cli.desktop.files.content["/media/rent.pdf"] = "receipt";
    (void)cli.run({"add", "Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900", "--remind", "2"});
    (void)cli.run({"pay", "Rent", "--receipt", "/media/rent.pdf"});
  }
  std::string backup() {
    return "/home/ada/.local/share/Tallyvane/" +
           cli.desktop.defaults.content.valueOr("QMLastBackupUID", std::string("?"));
  }
};

}  // namespace tallyvane::testing
