#include "freedesktop/SystemRegion.h"

#include <gtest/gtest.h>

#include "support/Fakes.h"
#include "support/TextTable.h"

namespace tallyvane::testing {
namespace {

/// The region, and how many diagnostics it took.
std::pair<Region, std::size_t> told(const TextTable& environment, const TextTable& links = {},
                                    const TextTable& files = {}) {
  RecordingLog log;
  Region region = regionTold({lookupIn(environment), lookupIn(links), lookupIn(files)}, log);
  return {std::move(region), log.diagnostics.size()};
}

TEST(SystemRegion, TakesOneLocaleForEverythingFromTheEnvironment) {
  const struct {
    TextTable environment;
    const char* locale;
    std::size_t diagnostics = 0;
  } rows[] = {
      {{}, "en_US"},
      {{{"LANG", "C.UTF-8"}}, "en_US"},
      {{{"LANG", "de"}}, "de"},
      {{{"LANG", "de_DE@euro"}}, "de_DE"},
      {{{"LANG", "sr_RS.UTF-8@latin"}}, "sr_Latn_RS"},
      {{{"LANG", "ca_ES.UTF-8@valencia"}}, "ca_ES_VALENCIA"},
      {{{"LANG", "../../etc"}}, "en_US", 1},
      {{{"LANG", "EN_us"}}, "en_US", 1},
      {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", "fr_FR.UTF-8"}, {"LC_MONETARY", "de_DE.UTF-8"}}, "fr_FR"},
      {{{"LANG", "de_DE.UTF-8"}, {"LC_ALL", "C.UTF-8"}}, "en_US"},
      {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", ""}, {"LC_MESSAGES", "it_IT.UTF-8"}}, "it_IT"},
      {{{"LANG", "sr_RS@latin"}, {"LC_MONETARY", "sr_ME"}}, "sr_Latn_ME"},
      {{{"LANG", "en_US.UTF-8"}, {"LC_MONETARY", "C"}, {"LC_TIME", "en_DK.UTF-8"}}, "en_US"},
  };
  for (const auto& row : rows) {
    const auto [region, diagnostics] = told(row.environment);
    EXPECT_EQ(region.locale, row.locale) << ::testing::PrintToString(row.environment);
    EXPECT_EQ(diagnostics, row.diagnostics) << ::testing::PrintToString(row.environment);
    EXPECT_FALSE(region.words);
  }
}

TEST(SystemRegion, TakesTheZoneFromTheVariableElseFromTheMachine) {
  const TextTable toBerlin{{"/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin"}};
  const struct {
    TextTable environment, links, files;
    const char* zone;
    std::size_t diagnostics = 0;
  } rows[] = {
      {{}, {}, {{"/etc/timezone", "\n"}}, "UTC"},
      {{}, toBerlin, {{"/etc/timezone", "Asia/Tokyo\n"}}, "Europe/Berlin"},
      {{}, {{"/etc/localtime", "../usr/share/zoneinfo/America/Indiana/Knox"}}, {}, "America/Indiana/Knox"},
      {{}, {{"/etc/localtime", "/srv/zone"}}, {{"/etc/timezone", " Asia/Tokyo"}}, "Asia/Tokyo"},
      {{{"TZ", ":America/New_York"}}, toBerlin, {}, "America/New_York"},
      {{{"TZ", "/usr/share/zoneinfo/posix/Asia/Kolkata"}}, toBerlin, {}, "Asia/Kolkata"},
      {{{"TZ", ":/etc/localtime"}}, toBerlin, {}, "Europe/Berlin"},
      {{{"TZ", ""}}, toBerlin, {}, "UTC"},
      {{{"TZ", "EST5EDT"}}, {}, {}, "EST5EDT"},
      {{{"TZ", "UTC0"}}, {}, {}, "UTC"},
      {{{"TZ", "<-0330>3:30"}}, {}, {}, "GMT-03:30"},
      {{{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"}}, toBerlin, {}, "UTC", 1},
      {{{"TZ", ":/srv/zone"}}, toBerlin, {}, "UTC", 1},
      {{{"TZ", "ABC99"}}, toBerlin, {}, "UTC", 1},
  };
  for (const auto& row : rows) {
    const auto [region, diagnostics] = told(row.environment, row.links, row.files);
    EXPECT_EQ(region.timeZone, row.zone) << ::testing::PrintToString(row.environment);
    EXPECT_EQ(diagnostics, row.diagnostics) << ::testing::PrintToString(row.environment);
  }
}

}  // namespace
}  // namespace tallyvane::testing
