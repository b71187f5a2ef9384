// A command line in memory, for commands that must work.
#pragma once

#include <nlohmann/json.hpp>

#include "support/CliDesktop.h"

namespace tallyvane::testing {

struct CliCommands : ::testing::Test {
  /// Runs a command that must work, and gives its output.
  std::string done(const std::vector<std::string>& arguments) {
    const Outcome outcome = cli.run(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, ::testing::IsEmpty());
    EXPECT_FALSE(cli.locked);
    return outcome.out;
  }
  /// The identifier of a new bill.
  std::string add(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "add");
    arguments.emplace_back("--json");
    return nlohmann::json::parse(done(arguments)).at("id");
  }
  CliDesktop cli;
};

}  // namespace tallyvane::testing
