// What the fuzzers begin with and what they once found.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "Fuzzed.h"
#include "support/TemporaryFolder.h"

namespace tallyvane::fuzz {
namespace {

TEST(Corpus, HoldsNothingThatBreaksWhatMustHold) {
  const std::map<std::string, void (*)(std::string_view)> fuzzed{
      {"property_list", propertyList}, {"binary_property_list", binaryPropertyList},
      {"typed_date", typedDate},       {"typed_repeat", typedRepeat},
      {"mail_queue", mailQueue},       {"form_body", formBody}};
  std::size_t folders = 0;
  for (const auto& folder : std::filesystem::directory_iterator(TALLYVANE_CORPUS)) {
    ++folders;
    const auto check = fuzzed.at(folder.path().filename());
    for (const auto& file : std::filesystem::directory_iterator(folder))
      EXPECT_NO_THROW(check(testing::contentOf(file.path()))) << file.path();
  }
  EXPECT_EQ(folders, fuzzed.size());
}

}  // namespace
}  // namespace tallyvane::fuzz
