// The options with which a bill is added or edited.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// As typed; unset when the option was not given.
struct BillOptions {
  std::optional<std::string> due;
  std::optional<std::string> repeat;
  std::optional<std::string> amount;
  std::optional<std::string> icon;
  std::optional<std::string> remind;
  std::optional<std::string> site;
  std::optional<std::string> balance;
  std::optional<std::string> interest;
  std::optional<std::string> notes;
  std::vector<std::string> tags;
  bool automatic = false;
  bool force = false;
};

/// As a bill keeps it; unset where nothing is to change.
struct BillFields {
  std::optional<Date> dueDate;  ///< the start of its day
  std::optional<Array> repeat;
  std::optional<double> amount;
  std::optional<std::string> icon;  ///< a name of the catalogue
  std::optional<bool> remindMe;
  std::optional<std::int64_t> reminderDays;
  std::optional<std::string> paySite;
  std::optional<double> balance;
  std::optional<double> interest;  ///< a fraction
  std::optional<std::string> notes;
  std::optional<std::vector<std::string>> tags;
  std::optional<bool> automatic;
  bool operator==(const BillFields&) const = default;
};

void addBillOptions(CLI::App& command, BillOptions& options);

/// Reads what was typed in the user's language and locale, relative to today. Fails at the first thing that cannot be
/// understood.
[[nodiscard]] BillFields fieldsFrom(const Platform& platform, const BillOptions& options);

/// Sets in a bill's dictionary what is to change, each key where it stands.
void apply(const BillFields& fields, Dictionary& bill);

}  // namespace tallyvane::cli
