#include "freedesktop/Gettext.h"

#include <gtest/gtest.h>

namespace tallyvane::testing {
namespace {

TEST(Gettext, NamesTheCatalogueOfALocaleAndThatOfChineseByItsScript) {
  const struct {
    const char* locale;
    const char* names;
  } rows[] = {
      {"de_AT", "de_AT"}, {"de", "de_DE"}, {"pt_BR", "pt_BR"}, {"ca_ES_VALENCIA", "ca_ES"}, {"zh_Hans_HK", "zh_CN"},
      {"zh_SG", "zh_CN"}, {"zh", "zh_CN"}, {"zh_TW", "zh_TW"}, {"zh_HK", "zh_TW"},          {"zh_Hant", "zh_TW"},
  };
  for (const auto& row : rows) EXPECT_EQ(catalogueNames(row.locale), row.names) << row.locale;
}

}  // namespace
}  // namespace tallyvane::testing
