// Data folders to be checked and repaired.
#pragma once

#include "support/Bills.h"
#include "support/CliCommands.h"

namespace tallyvane::testing {

/// Two active bills.
struct CheckCommand : CliCommands {
  CheckCommand() { putActiveBills(cli.desktop, {billOf(a), billOf(b)}); }

  static Dictionary billOf(const std::string& bid) { return bill(bid, "Bill " + bid.substr(0, 1), noon(2027, 3, 13)); }
  void putBill(const std::string& bid, const Dictionary& content) {
    cli.desktop.files.putPlist(inDataFolder(bid + ".plist"), content);
  }
  inline static const std::string a = std::string(32, 'A');
  inline static const std::string b = std::string(32, 'B');
  inline static const std::string c = std::string(32, 'C');
};

/// One bill twice and one in two lists; a third in none.
struct Repairs : CheckCommand {
  Repairs() {
    putBill(c, with(billOf(c), "RemindMe", true));
    cli.desktop.defaults.content.set("QMEnableNotificationCenter", true);
    putIndex(cli.desktop, index({a, b, a}, {b}, {}));
  }
  void answering(const std::optional<std::string>& answer) {
    cli.asker = [this, answer](const std::string& question) {
      questions.push_back(question);
      EXPECT_FALSE(cli.locked);
      return answer;
    };
  }
  std::vector<std::string> questions;
  const std::string copy = "/home/ada/.local/share/Tallyvane/before-repair-2027-03-10";
};

}  // namespace tallyvane::testing
