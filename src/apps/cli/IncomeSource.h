// Sources of income as a person types and reads them.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "cli/Json.h"
#include "cli/terminal/Table.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// As typed; unset when the option was not given.
struct IncomeOptions {
  std::optional<std::string> name;
  std::optional<std::string> amount;
  std::optional<std::string> repeat;
  std::optional<std::string> day;   ///< of the month, for once and monthly
  std::optional<std::string> from;  ///< a pay date, for weekly and every 2 weeks
};

void addIncomeOptions(CLI::App& command, IncomeOptions& options);

/// Sets in a source what was typed. Fails at the first thing that cannot be understood, that does not go together, or
/// that a source needs and neither has nor is given.
void apply(const Platform& platform, const IncomeOptions& options, Dictionary& source);

/// Where in the list the one source is that the text names, by its name or its number from 1. Fails otherwise.
[[nodiscard]] std::size_t findSource(const Array& sources, const std::string& text);

[[nodiscard]] std::string nameOf(const Value& source);
/// In English: "monthly"; "never" for a code that brings nothing, "cannot be read" for what is none.
[[nodiscard]] std::string repeatWord(const Dictionary& source);
/// When it pays, as the model shows it; for programs the day of the month, "last", or the next date.
[[nodiscard]] Cell payDayCell(const Platform& platform, const Dictionary& source);
[[nodiscard]] Json incomeJson(const Platform& platform, std::size_t number, const Value& source);

}  // namespace tallyvane::cli
