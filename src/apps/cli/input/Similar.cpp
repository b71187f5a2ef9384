#include "cli/input/Similar.h"
#include "foundation/IcuSupport.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <numeric>

namespace tallyvane::cli {

namespace {

icu::UnicodeString unicodeFolded(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* normalizer = icu::Normalizer2::getNFKCCasefoldInstance(status);
  const icu::UnicodeString source = unicodeOf(text);
  return U_SUCCESS(status) ? normalizer->normalize(source, status) : source;
}

/// How many insertions, removals and replacements of units lead from one text to the other.
std::int32_t changesBetween(const icu::UnicodeString& left, const icu::UnicodeString& right) {
  std::vector<std::int32_t> row(static_cast<std::size_t>(right.length()) + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::int32_t i = 0; i < left.length(); ++i) {
    std::int32_t diagonal = row[0]++;
    for (std::size_t j = 1; j < row.size(); ++j) {
      const bool same = left.charAt(i) == right.charAt(static_cast<std::int32_t>(j) - 1);
      const std::int32_t replaced = diagonal + (same ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string folded(std::string_view text) { return utf8Of(unicodeFolded(text)); }

std::optional<std::string> nearest(std::string_view text, const std::vector<std::string>& choices) {
  const icu::UnicodeString wanted = unicodeFolded(text);
  std::int32_t fewest = wanted.length() / 2 + 1;
  std::optional<std::string> best;
  for (const std::string& choice : choices) {
    const std::int32_t changes = changesBetween(wanted, unicodeFolded(choice));
    if (changes >= fewest) continue;
    fewest = changes;
    best = choice;
  }
  return best;
}

}  // namespace tallyvane::cli
