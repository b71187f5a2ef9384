#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "foundation/PropertyList.h"
#include "support/AnyValue.h"

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

TEST(PropertyList, anyValueIsReadBackAsItWasWritten) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const Value value = testing::AnyValue(seed).make(4);
    const std::string text = writePropertyList(value);
    const Result<Value> read = readPropertyList(text);
    ASSERT_TRUE(read) << read.error() << "\nseed " << seed << "\n" << text;
    EXPECT_TRUE(*read == value) << "seed " << seed << "\n" << text;
    EXPECT_EQ(writePropertyList(*read), text) << "seed " << seed;
  }
}

}  // namespace
}  // namespace tallyvane
