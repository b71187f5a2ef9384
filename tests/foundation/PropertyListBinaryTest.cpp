#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <string>
#include <vector>

#include "foundation/PropertyList.h"

namespace tallyvane {
namespace {

using ::testing::HasSubstr;

std::string bytes(std::initializer_list<int> values) {
  std::string result;
  for (const int value : values) result.push_back(static_cast<char>(value));
  return result;
}

/// A binary list of these objects, the first its root; offsets of four bytes, references of one.
std::string binaryList(const std::vector<std::string>& objects) {
  std::string list = "bplist00", offsets;
  const auto bigEndian = [](std::size_t number, int width) {
    std::string text;
    while (width-- > 0) text.push_back(static_cast<char>(number >> 8 * width));
    return text;
  };
  for (const std::string& object : objects) {
    offsets += bigEndian(list.size(), 4);
    list += object;
  }
  const std::size_t table = list.size();
  return list + offsets + bytes({0, 0, 0, 0, 0, 0, 4, 1}) + bigEndian(objects.size(), 8) + bigEndian(0, 8) +
         bigEndian(table, 8);
}

TEST(BinaryPropertyList, isReadAsTheSameValuesAsItsXmlForm) {
  std::vector<std::uint8_t> blob(300);
  for (std::size_t i = 0; i < blob.size(); ++i) blob[i] = static_cast<std::uint8_t>(i);
  const Dictionary bill{{"Name", "Öl & Gas 🙂\r\n"},
                        {"LastPayment", distantPast},
                        {"DueDate", distantFuture},
                        {"Amount", 0.1},
                        {"Third", 1.0 / 3},
                        {"Small", 255},
                        {"Negative", -1},
                        {"Large", INT64_MAX},
                        {"Blob", Data{blob}},
                        {"Tags", Array{"a", "a", Array{}}},
                        {"Auto", true},
                        {"None", Dictionary{}}};
  const std::string xml = writePropertyList(bill);
  plist_t root = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &root);
  char* binary = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(root, &binary, &length);
  ASSERT_NE(binary, nullptr);
  const std::string list(binary, length);
  plist_to_bin_free(binary);
  plist_free(root);

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

struct Refused {
  std::vector<std::string> objects;
  std::string reason;
};

class RefusedBinaryList : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedBinaryList, isNoValueAndTheErrorSaysWhy) {
  const Result<Value> read = readPropertyList(binaryList(GetParam().objects));
  ASSERT_FALSE(read);
  EXPECT_THAT(read.error(), HasSubstr(GetParam().reason));
}

/// Arrays that each hold the next `width` times, down to `leaf`.
std::vector<std::string> chain(int length, int width, const std::string& leaf) {
  std::vector<std::string> objects;
  for (int i = 1; i <= length; ++i)
    objects.push_back(bytes({0xA0 + width}) + std::string(static_cast<std::size_t>(width), static_cast<char>(i)));
  objects.push_back(leaf);
  return objects;
}

/// A root that lists arrays each of which holds the one before it: no way down is long when it is first gone.
std::vector<std::string> tower(int height) {
  std::vector<std::string> objects = {bytes({0xAF, 0x10, height}), bytes({0xA0})};
  for (int i = 1; i <= height; ++i) objects.front() += static_cast<char>(i);
  for (int i = 1; i < height; ++i) objects.push_back(bytes({0xA1, i}));
  return objects;
}

INSTANTIATE_TEST_SUITE_P(
    PropertyList, RefusedBinaryList,
    ::testing::Values(Refused{chain(65, 1, bytes({0x09})), "nested too deeply"},
                      Refused{chain(200, 1, bytes({0x09})), "nested too deeply"},
                      Refused{tower(120), "nested too deeply"}, Refused{chain(30, 2, bytes({0x09})), "too large"},
                      Refused{chain(6, 10, bytes({0x5F, 0x11, 0x04, 0x00}) + std::string(1024, 'x')), "too large"},
                      Refused{{bytes({0xA1, 0})}, "contains itself"},
                      Refused{{bytes({0xA1, 1}), bytes({0xA1, 2}), bytes({0xA1, 1})}, "contains itself"},
                      Refused{{bytes({0xA1, 1})}, "does not have"},
                      Refused{{bytes({0xD1, 1, 2}), bytes({0x10, 1}), bytes({0x09})}, "key is not a string"},
                      Refused{{bytes({0xAF, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})}, "cut short"},
                      Refused{{bytes({0x00})}, "not known here"}, Refused{{bytes({0x80, 1})}, "not known here"},
                      Refused{{bytes({0x14, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 5})}, "64 bits"},
                      Refused{{bytes({0x33, 0x7F, 0xF8, 0, 0, 0, 0, 0, 0})}, "years 1 to 9999"},
                      Refused{{bytes({0x33, 0x42, 0x5F, 0, 0, 0, 0, 0, 0})}, "years 1 to 9999"},
                      Refused{{bytes({0x61, 0xD8, 0x00})}, "cannot have"}, Refused{{bytes({0x51, 0})}, "cannot have"}));

}  // namespace
}  // namespace tallyvane
