#include "freedesktop/Gettext.h"

#include <gtest/gtest.h>

namespace tallyvane::testing {
namespace {

TEST(Gettext, NamesTheCatalogueOfALocaleAndThatOfChineseByItsScript) {
  const std::pair<const char*, const char*> rows[] = {
      {"de_AT", "de_AT"}, {"de", "de_DE"}, {"pt_BR", "pt_BR"}, {"ca_ES_VALENCIA", "ca_ES"}, {"zh_Hans_HK", "zh_CN"},
      {"zh_SG", "zh_CN"}, {"zh", "zh_CN"}, {"zh_TW", "zh_TW"}, {"zh_HK", "zh_TW"},          {"zh_Hant", "zh_TW"},
  };
  for (const auto& [locale, names] : rows) EXPECT_EQ(catalogueNames(locale), names) << locale;
}

}  // namespace
}  // namespace tallyvane::testing
