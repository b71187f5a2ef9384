#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "foundation/PropertyList.h"

namespace tallyvane {
namespace {

using namespace std::chrono_literals;

/// What stands between the opening and the closing of the list.
std::string written(const Value& value) {
  std::string text = writePropertyList(value);
  const std::size_t start = text.find("<plist version=\"1.0\">\n") + 22;
  return text.substr(start, text.rfind("\n</plist>\n") - start);
}

TEST(PropertyList, isWrittenInOneCanonicalForm) {
  const Dictionary payment{{"Date", Date{std::chrono::sys_days{std::chrono::year{2027} / 3 / 1} + 1500ms}},
                           {"Paid", 12.5}};
  const Dictionary bill{{"Name", "Gas & <Öl>\r"},
                        {"Count", -3},
                        {"Auto", true},
                        {"Payments", Array{payment}},
                        {"Tags", Array{}},
                        {"More", Dictionary{}},
                        {"Blob", Data{std::vector<std::uint8_t>(58, 0xFF)}},
                        {"", ""}};
  EXPECT_EQ(writePropertyList(bill),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>Name</key>
	<string>Gas &amp; &lt;Öl&gt;&#13;</string>
	<key>Count</key>
	<integer>-3</integer>
	<key>Auto</key>
	<true/>
	<key>Payments</key>
	<array>
		<dict>
			<key>Date</key>
			<date>2027-03-01T00:00:01Z</date>
			<key>Paid</key>
			<real>12.5</real>
		</dict>
	</array>
	<key>Tags</key>
	<array/>
	<key>More</key>
	<dict/>
	<key>Blob</key>
	<data>
	////////////////////////////////////////////////////////////////////////////
	/w==
	</data>
	<key></key>
	<string></string>
</dict>
</plist>
)");
}

TEST(PropertyList, isWrittenSoThatItCanBeReadWhateverItHolds) {
  const std::pair<Value, std::string> cases[] = {
      {std::nan(""), "<real>nan</real>"},
      {-HUGE_VAL, "<real>-inf</real>"},
      {-0.0, "<real>-0</real>"},
      {0.1F, "<real>0.10000000149011612</real>"},
      {distantPast, "<date>0001-01-01T00:00:00Z</date>"},
      {distantPast - 1us, "<date>0001-01-01T00:00:00Z</date>"},
      {Date::min(), "<date>0001-01-01T00:00:00Z</date>"},
      {Date::max(), "<date>9999-12-31T23:59:59Z</date>"},
      {distantFuture - 1us, "<date>4000-12-31T23:59:59Z</date>"},
      {std::string("a\0b\x1F\x7F", 5), "<string>a\uFFFDb\uFFFD\x7F</string>"},
      {"\xC3(\xED\xA0\x80\xF0\x9F", "<string>\uFFFD(\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD</string>"},
      {"\uFFFE\U0010FFFF", "<string>\uFFFD\uFFFD\uFFFD\U0010FFFF</string>"},
  };
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(written(value), text);
    EXPECT_EQ(readPropertyList(writePropertyList(value)).error(), "") << text;
  }
}

/// Any value that a file can hold, of at most so many levels.
class AnyValue {
 public:
  explicit AnyValue(unsigned seed) : random_(seed) {}

  Value make(int levels) {
    switch (random_() % (levels > 0 ? 8 : 6)) {
      case 0:
        return random_() % 2 == 0;
      case 1:
        return static_cast<std::int64_t>(random_()) >> random_() % 64;
      case 2:
        return real();
      case 3:
        return text();
      case 4:
        return Date{distantPast + std::chrono::seconds{random_() % 315537897600}};
      case 5:
        return data();
      case 6:
        return array(levels);
      default:
        return dictionary(levels);
    }
  }

 private:
  double real() {
    const auto number = std::bit_cast<double>(random_());
    return std::isnan(number) ? 0.1 : number;
  }
  std::string text() {
    static const char* const pieces[] = {"a",   " ",  "\r\n", "\t", "<",    "&amp;", ">",
                                         "]]>", "\"", "é",    "日", "🙂", "\x7F"};
    std::string result;
    for (auto count = random_() % 9; count > 0; --count) result += pieces[random_() % std::size(pieces)];
    return result;
  }
  Data data() {
    Data result;
    for (auto count = random_() % 130; count > 0; --count) result.bytes.push_back(static_cast<std::uint8_t>(random_()));
    return result;
  }
  Array array(int levels) {
    Array result;
    for (auto count = random_() % 6; count > 0; --count) result.push_back(make(levels - 1));
    return result;
  }
  Dictionary dictionary(int levels) {
    Dictionary result;
    for (auto count = random_() % 30; count > 0; --count) result.set(text(), make(levels - 1));
    return result;
  }
  std::mt19937_64 random_;
};

TEST(PropertyList, anyValueIsReadBackAsItWasWritten) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const Value value = AnyValue(seed).make(4);
    const std::string text = writePropertyList(value);
    const Result<Value> read = readPropertyList(text);
    ASSERT_TRUE(read) << read.error() << "\nseed " << seed << "\n" << text;
    EXPECT_TRUE(*read == value) << "seed " << seed << "\n" << text;
    EXPECT_EQ(writePropertyList(*read), text) << "seed " << seed;
  }
}

}  // namespace
}  // namespace tallyvane
