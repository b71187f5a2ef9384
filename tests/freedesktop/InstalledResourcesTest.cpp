#include <gmock/gmock.h>

#include "support/SmallResources.h"

namespace tallyvane::testing {
namespace {

TEST(InstalledTexts, OneThatCannotBeReadIsNone) {
  ResourcesInstalled installed;
  const std::string path = installed.folder.path + "/Contents/Resources/template.html";
  EXPECT_EQ(installed.text("template.html"), "<p>");
  put(path, "<p>\xff");
  EXPECT_EQ(installed.text("template.html"), std::nullopt);
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_EQ(installed.text("template.html"), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
