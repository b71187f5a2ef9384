#include "foundation/FileUrl.h"

#include <gtest/gtest.h>

namespace tallyvane::testing {
namespace {

TEST(FileUrl, namesAPathAndIsReadBack) {
  const std::pair<std::string, std::string> urls[] = {
      {"/", "file:///"},
      {"/home/ada/Bills", "file:///home/ada/Bills"},
      {"/a b/100%/\xC3\xA9?#", "file:///a%20b/100%25/%C3%A9%3F%23"},
  };
  for (const auto& [path, url] : urls) {
    EXPECT_EQ(fileUrlOf(path), url);
    EXPECT_EQ(pathOfFileUrl(url), path);
  }
  EXPECT_EQ(pathOfFileUrl("file://localhost/a/b//"), "/a/b");
}

TEST(FileUrl, refusesWhatNamesNoLocalPath) {
  for (const std::string url : {"", "/a", "file:/a", "file://server/a", "http://localhost/a", "file:///a%0",
                                "file:///a%zz", "file:///a%00b", "file://", "file://localhost"}) {
    EXPECT_EQ(pathOfFileUrl(url), std::nullopt) << url;
  }
  EXPECT_EQ(pathOfFileUrl(std::string("file:///a\0b", 11)), std::nullopt);
}

}  // namespace
}  // namespace tallyvane::testing
