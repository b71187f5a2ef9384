// A household with one bill, at the command line.
#pragma once

#include "support/CliCommands.h"

namespace tallyvane::testing {

struct PaymentCommands : CliCommands {
  /// The amounts of a bill's payments in the stored order.
  std::vector<double> amounts(const std::string& bill) {
    std::vector<double> list;
    const json shown = doneJson({"payments", bill});
    for (const json& payment : shown.at("payments")) list.push_back(payment.at("amount"));
    return list;
  }
  /// How often the command saves the bill's file.
  std::ptrdiff_t savesOfBill(const std::string& bid, const Arguments& command) {
    const std::string path = cli.dataFolder + "/" + bid + ".plist";
    const auto& saved = cli.desktop.files.saved;
    const auto before = std::count(saved.begin(), saved.end(), path);
    done(command);
    return std::count(saved.begin(), saved.end(), path) - before;
  }

  const std::string rent = add({"Rent", "--due", "2027-03-13", "--repeat", "monthly", "--amount", "900"});
};

}  // namespace tallyvane::testing
