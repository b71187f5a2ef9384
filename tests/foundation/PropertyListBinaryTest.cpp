#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "foundation/PropertyList.h"
#include "support/BinaryLists.h"
#include "support/Matchers.h"

namespace tallyvane::testing {
namespace {

TEST(BinaryPropertyList, isReadAsTheSameValuesAsItsXmlForm) {
  std::vector<std::uint8_t> blob(300);
  for (std::size_t i = 0; i < blob.size(); ++i) blob[i] = static_cast<std::uint8_t>(i);
  const Dictionary bill{{"Name", "Öl & Gas 🙂\r\n"},
                        {"None", Dictionary{}},
                        {"DueDate", distantFuture},
                        {"Auto", true},
                        {"Numbers", Array{0.1, 1.0 / 3, 255, -1, INT64_MAX, distantPast}},
                        {"Blob", Data{blob}},
                        {"Tags", Array{"a", "a", Array{}}}};
  const std::string xml = writePropertyList(bill);
  const std::string list = binaryOf(xml);
  ASSERT_NE(list, "");
  const Result<Value> read = readPropertyList(list);
  ASSERT_TRUE(read) << read.error();
  EXPECT_EQ(writePropertyList(*read), xml);
  for (std::size_t cut = 0; cut < list.size(); ++cut) {
    const std::vector<char> part(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(cut));
    EXPECT_FALSE(readPropertyList({part.data(), part.size()})) << cut;
  }
  for (std::size_t at = 8; at < list.size(); ++at) {  // whatever comes of it, no crash
    for (const int flip : {0x01, 0x10, 0x80, 0xFF}) {
      std::string damaged = list;
      damaged[at] = static_cast<char>(damaged[at] ^ flip);
      const Result<Value> reread = readPropertyList(damaged);
      EXPECT_NE(static_cast<bool>(reread), !reread.error().empty()) << at;
    }
  }
}

TEST(BinaryPropertyList, keepsWhatAControlCharacterStoodBetween) {
  const Result<Value> read = readPropertyList(binaryList({bytes({0x55, 'a', 0x0B, 'b', '\r', '<'})}));
  ASSERT_TRUE(read) << read.error();
  EXPECT_EQ(*read->get<std::string>(), "a\uFFFDb\r<");
}

TEST(BinaryPropertyList, isNoValueWhenItIsDamagedAndTheErrorSaysWhy) {
  const std::string yes = bytes({0x09});
  const std::string kilobyte = bytes({0x5F, 0x11, 0x04, 0x00}) + std::string(1024, 'x');
  const std::pair<std::string, std::vector<std::string>> rows[] = {
      {"nested too deeply", chain(65, 1, yes)},
      {"nested too deeply", tower(120)},
      {"too large", chain(30, 2, yes)},
      {"too large", chain(6, 10, kilobyte)},
      {"contains itself", {bytes({0xA1, 0})}},
      {"contains itself", {bytes({0xA1, 1}), bytes({0xA1, 2}), bytes({0xA1, 1})}},
      {"does not have", {bytes({0xA1, 1})}},
      {"key is not a string", {bytes({0xD1, 1, 2}), bytes({0x10, 1}), yes}},
      {"cut short", {bytes({0xAF, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})}},
      {"not known here", {bytes({0x80, 1})}},
      {"64 bits", {bytes({0x14, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 5})}},
      {"years 1 to 9999", {bytes({0x33, 0x7F, 0xF8, 0, 0, 0, 0, 0, 0})}},
      {"years 1 to 9999", {bytes({0x33, 0x42, 0x5F, 0, 0, 0, 0, 0, 0})}},
      {"cannot have", {bytes({0x61, 0xD8, 0x00})}},
      {"cannot have", {bytes({0x51, 0})}},
  };
  for (const auto& [reason, objects] : rows)
    EXPECT_THAT(readPropertyList(binaryList(objects)).error(), HasSubstr(reason));
}

}  // namespace
}  // namespace tallyvane::testing
