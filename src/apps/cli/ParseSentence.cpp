#include "cli/ParseSentence.h"

#include <regex>

#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

/// The parser's own texts, and ours for what its placeholders stand for; the parser tells nothing but its text.
constexpr std::pair<const char*, const char*> texts[] = {
    // translators: in the next texts the first is an option such as --due, or the name of an argument such as BILL
    {"(.+): ([^:]*) not in \\{(.*)\\}", marked("{}: {} is not one of: {}")},
    {"(.+): [0-9]+ required (?:.*) missing", marked("{} needs a value")},
    {"(.+): At Most ([0-9]+) required but received ([0-9]+)", marked("{}: at most {} expected, {} given")},
    {"(.+): At least ([0-9]+) required but received ([0-9]+)", marked("{}: at least {} expected, {} given")},
    {"(.+) is required", marked("{} is required")},
    // translators: two options that cannot be given together
    {"(.+) excludes (.+)", marked("{} does not go with {}")},
    // translators: two options of which the first is only given together with the second
    {"(.+) requires (.+)", marked("{} needs {}")},
};

}  // namespace

std::string parseSentence(const CLI::ParseError& error) {
  const std::string theirs = error.what();
  for (const auto& [pattern, ours] : texts) {
    std::smatch parts;
    if (!std::regex_match(theirs, parts, std::regex(pattern))) continue;
    const std::string first = parts[1];
    const std::string second = parts.size() > 2 ? parts[2].str() : "";
    const std::string third = parts.size() > 3 ? parts[3].str() : "";
    return fmt::vformat(translated(ours), fmt::make_format_args(first, second, third));
  }
  return theirs;
}

}  // namespace tallyvane::cli
