// An operation in a furnished household, struck by a fault at each of its accesses to files and settings in turn.
#pragma once

#include <fmt/format.h>

#include "support/FurnishedHousehold.h"
#include "support/KeptState.h"
#include "support/Strikes.h"

namespace tallyvane::testing {

struct SweptOperation {
  const char* name;
  Operation operation;
  /// Whole or not at all: what fails leaves all files as they were. Of the others each file is old or new.
  bool whole = true;
  std::vector<Operation> before{};
};

inline void PrintTo(const SweptOperation& swept, std::ostream* out) { *out << swept.name; }

/// A test says what must hold after each fault.
class FaultSweep {
 public:
  explicit FaultSweep(const SweptOperation& swept) : swept_(swept), furnished_(cli_.desktop) {}
  virtual ~FaultSweep() = default;
  FaultSweep(const FaultSweep&) = delete;
  FaultSweep& operator=(const FaultSweep&) = delete;

  /// How many faults struck.
  int run() {
    furnish(cli_);
    for (const Operation& before : swept_.before) EXPECT_EQ(before(cli_, cli_.desktop.files).status, 0) << swept_.name;
    note();
    furnished_ = KeptState(cli_.desktop);
    reminders_ = remindersOf(cli_.desktop);
    bids_ = listedIn(cli_.desktop.files, cli_.currentFolder());
    runUnstruck();
    int points = 0;
    for (const Strike kind : allStrikes) points += strikeEveryAccess(kind);
    return points;
  }

 protected:
  virtual void expectAfter(const Struck& struck) = 0;

  const SweptOperation& swept_;
  CliDesktop cli_;
  KeptState furnished_;
  std::vector<std::string> reminders_;
  std::set<std::string> bids_;  ///< that must be there whatever strikes
  FileContents known_;
  std::map<std::string, std::string> done_;  ///< all files after the operation when nothing strikes
  std::set<std::string> findings_;           ///< without any fault
  Strike kind_{};
  std::string where_;

 private:
  void note() {
    for (const std::string& finding : cli_.findings()) findings_.insert(finding);
  }
  /// What the operation itself takes off the lists need not be there after a fault.
  void runUnstruck() {
    Outcome outcome{};
    known_ = contentsDuring(cli_, swept_.operation, outcome);
    EXPECT_EQ(outcome.status, 0) << swept_.name << ": " << outcome.err;
    done_ = cli_.desktop.files.content;
    note();
    const std::set<std::string> left = listedIn(cli_.desktop.files, cli_.currentFolder());
    std::erase_if(bids_, [&](const std::string& bid) { return !left.contains(bid); });
  }
  int strikeEveryAccess(Strike kind) {
    for (int access = 1;; ++access) {
      furnished_.putInto(cli_.desktop);
      const Struck struck = strike(cli_, swept_.operation, kind, access);
      if (!struck.reached) return access - 1;
      kind_ = kind;
      where_ = fmt::format("{}, strike {} at {}: ", swept_.name, static_cast<int>(kind), access);
      expectAfter(struck);
    }
  }
};

}  // namespace tallyvane::testing
