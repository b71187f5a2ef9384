// A command line in memory, for commands that must work.
#pragma once

#include "support/CliDesktop.h"

namespace tallyvane::testing {

struct CliCommands : ::testing::Test {
  /// Runs a command that must work, and gives its output.
  std::string done(const Arguments& arguments) {
    const Outcome outcome = cli.run(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_FALSE(cli.locked);
    return outcome.out;
  }
  json doneJson(Arguments arguments) {
    arguments.emplace_back("--json");
    return json::parse(done(arguments));
  }
  /// The identifier of a new bill.
  std::string add(Arguments arguments) {
    arguments.insert(arguments.begin(), "add");
    return doneJson(arguments).at("id");
  }
  /// Writes a bill's file with another value under a key, or without the key.
  void change(const std::string& bid, std::string_view key, std::optional<Value> value) {
    Dictionary content = cli.bill(bid);
    if (value) {
      content.set(key, std::move(*value));
    } else {
      content.erase(key);
    }
    cli.desktop.files.putPlist(cli.dataFolder + "/" + bid + ".plist", content);
  }
  CliDesktop cli;
};

}  // namespace tallyvane::testing
