#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/Matchers.h"
#include "support/PropertyLists.h"

namespace tallyvane::testing {
namespace {

using namespace std::chrono_literals;

TEST(PropertyList, contentIsReadAsItsValue) {
  Array deepest;
  for (int level = 1; level < 64; ++level) deepest = holding(std::move(deepest));
  const std::pair<std::string, Value> accepted[] = {
      {"<true/>", true},
      {"<false></false>", false},
      {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
      {"<integer>+9223372036854775807</integer>", std::numeric_limits<std::int64_t>::max()},
      {"<integer>0x7fffFFFFffffFFFF</integer>", std::numeric_limits<std::int64_t>::max()},
      {"<integer>-0x10</integer>", -16},
      {"<integer>007</integer>", 7},
      {"<real>1</real>", 1.0},
      {"<real>.5</real>", 0.5},
      {"<real>5e-324</real>", 5e-324},
      {"<real>-INF</real>", -HUGE_VAL},
      {"<real>+infinity</real>", HUGE_VAL},
      {"<real>1.7976931348623157e308</real>", 0x1.fffffffffffffp1023},
      {"<date>2028-02-29T23:59:59Z</date>", Date{std::chrono::sys_days{std::chrono::year{2028} / 2 / 29} + 86399s}},
      {"<date>1-01-01T00:00:00Z</date>", distantPast},
      {"<date>9999-12-31T23:59:59Z</date>", Date{std::chrono::sys_days{std::chrono::year{10000} / 1 / 1} - 1s}},
      {"<data>\n\tAP8 Q\n\t</data>", Data{{0x00, 0xFF, 0x10}}},
      {"<data>/w==</data>", Data{{0xFF}}},
      {"<data/>", Data{}},
      {"<string/>", ""},
      {"<string> \t\n </string>", " \t\n "},
      {"<string>a\r\nb\rc&#13;</string>", "a\nb\nc\r"},
      {"<string>&lt;&amp;&gt;&quot;&apos;&#x1F642;&#228;</string>", "<&>\"'🙂ä"},
      {"<string>Miete für <![CDATA[<b> & ]] >\r\n]]>日本 🏠</string>", "Miete für <b> & ]] >\n日本 🏠"},
      {"<string>a > b ]] &gt;\x7f\xEE\x80\x80</string>", "a > b ]] >\x7f\xEE\x80\x80"},
      {"<array/>", Array{}},
      {"<dict></dict>", Dictionary{}},
      {"<!-- a --> <array ><!-- > --><true/>\n<string>x</string ></array\n><!---->", Array{true, "x"}},
      {"<dict><key>a</key><integer>1</integer> <key/><dict><key>ä&amp;</key><array/></dict></dict>",
       Dictionary{{"a", 1}, {"", Dictionary{{"ä&", Array{}}}}}},
      {repeated("<array>", 64) + repeated("</array>", 64), deepest}};
  for (const auto& [content, value] : accepted) {
    const Result<Value> read = readPropertyList(listOf(content));
    ASSERT_TRUE(read) << content << ": " << read.error();
    EXPECT_TRUE(*read == value) << content;
  }
}

TEST(PropertyList, takesTheUsualProloguesAndRefusesTheOthers) {
  const std::string list = "<plist><true/></plist>";
  for (const std::string prologue :
       {"", "\xEF\xBB\xBF<?xml version=\"1.0\"?>", " \n<!-- c -->",
        "<?xml version='1.0' encoding='utf-8' standalone='yes' ?>\n<!-- c --><!DOCTYPE plist>\n",
        "<!DOCTYPE plist SYSTEM 'x'>", "<!DOCTYPE plist PUBLIC \"-//A//B\"\n \"http://localhost/x.dtd\" >"}) {
    EXPECT_EQ(readPropertyList(prologue + list).error(), "") << prologue;
  }
  for (const std::string prologue :
       {"\xFF\xFE", " <?xml version=\"1.0\"?>", "<?xml version=\"1.1\"?>", "<?xml?>", "x",
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>", "<!DOCTYPE html>", "<!DOCTYPE plistx>",
        "<!DOCTYPE plist [<!ENTITY a \"b\">]>", "<!DOCTYPE plist[]>", "<!DOCTYPE plist SYSTEM 'x' []>",
        "<!DOCTYPE plist><!DOCTYPE plist>", "<!-- -- -->", "<!-- \xFF -->", "<?php ?>", "<plist>"}) {
    EXPECT_NE(readPropertyList(prologue + list).error(), "") << prologue;
  }
}

TEST(PropertyList, isNoValueWhenItsContentIsWrongAndTheErrorSaysWhyAndWhere) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> refused = {
      {"does not fit", {"<integer>9223372036854775808</integer>", "<integer>-0x8000000000000001</integer>"}},
      {"does not fit", {"<real>1e999</real>"}},
      {"\"1.0\" is not a whole number", {"<integer>1.0</integer>"}},
      {"not a whole number",
       {"<integer/>", "<integer> 1</integer>", "<integer>--1</integer>", "<integer>0x</integer>"}},
      {"not a number",
       {"<real>1,5</real>", "<real>infin</real>", "<real>+-1</real>", "<real>nan(1)</real>", "<real/>"}},
      {"no such date", {"<date>2027-02-29T00:00:00Z</date>", "<date>0000-03-01T00:00:00Z</date>"}},
      {"no such date", {"<date>2027-03-01T24:00:00Z</date>", "<date>2027-03-01T00:00:60Z</date>"}},
      {"not a date", {"<date>12027-03-01T00:00:00Z</date>", "<date>-027-03-01T00:00:00Z</date>"}},
      {"not a date", {"<date>2027-03-01</date>", "<date>2027-03-01T00:00:00+01:00</date>"}},
      {"cut short", {"<data>AP8</data>", "<data>A===</data>"}},
      {"not base64", {"<data>A=AA</data>", "<data>AP-_</data>"}},
      {"UTF-8", {"<string>\xC3</string>", "<string>\xE0\x82\x80</string>", "<string>\xED\xA0\x80</string>"}},
      {"UTF-8", {"<string>\xEF\xBF\xBF</string>", "<string>\xF4\x90\x80\x80</string>"}},
      {"control character", {"<string>\x1B</string>"}},
      {"may not be in a text", {"<string>]]></string>"}},
      {"entities", {"<string>&nbsp;</string>"}},
      {"&amp;", {"<string>a & b</string>"}},
      {"no character", {"<string>&#0;</string>", "<string>&#xD800;</string>", "<string>&#x110000;</string>"}},
      {"no character", {"<string>&#X41;</string>", "<string>&#-1;</string>"}},
      {"elements or comments", {"<string><b/></string>", "<string>a<!-- b --></string>"}},
      {"not closed", {"<string>a</integer>", "<true>yes</true>", "</array>"}},
      {"text where", {"text"}},
      {"is not an element", {"<null/>", "<True/>"}},
      {"only be in a <dict>", {"<key>a</key>", "<dict><key>a</key><key>b</key></dict>"}},
      {"attribute", {"<string id=\"1\">a</string>"}},
      {"a <key> is missing before <string>", {"<dict><string>a</string></dict>"}},
      {"a value is missing", {"<dict><key>a</key></dict>"}},
      {"elements and comments", {"<![CDATA[a]]>"}},
      {"more than 64 levels", {repeated("<array>", 64), repeated("<dict><key>a</key>", 1000000)}},
  };
  for (const auto& [reason, contents] : refused)
    for (const std::string& content : contents)
      EXPECT_THAT(readPropertyList(listOf("<array>\n" + content + "</array>")).error(),
                  AllOf(HasSubstr("line 2: "), HasSubstr(reason)))
          << content.substr(0, 80);
}

TEST(PropertyList, refusesAListThatIsCutShortAnywhereOrHasMoreBehindIt) {
  const std::string whole =
      "<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"a\" \"b\"><!-- c --><plist version=\"1.0\"><dict><key>a</key>"
      "<string>b&amp;<![CDATA[c]]>ä</string><key>d</key><data>AP8Q</data></dict></plist>";
  ASSERT_TRUE(readPropertyList(whole));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of its own, so that reading past its end shows under the address sanitizer.
    const std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_FALSE(readPropertyList({part.data(), part.size()})) << length;
  }
  for (const std::string more : {"x", "<true/>", "<plist><true/></plist>", "&amp;", "</plist>"})
    EXPECT_FALSE(readPropertyList(whole + more)) << more;
  EXPECT_FALSE(readPropertyList("<plist><true/><true/></plist>"));
  EXPECT_FALSE(readPropertyList("<plist/>"));
}

TEST(PropertyList, refusesWhatIsLargerThanItMayBe) {
  const std::string list = "<plist><string>" + std::string(1000, 'x') + "</string></plist>";
  EXPECT_TRUE(readPropertyList(list, {.bytes = list.size()}));
  EXPECT_EQ(readPropertyList(list, {.bytes = list.size() - 1}).error(), "it is too large for a property list");
}

TEST(PropertyList, aKeyThatComesTwiceKeepsItsFirstPlaceAndItsLastValue) {
  for (const int others : {0, 31, 32, 5000}) {
    std::string content = "<dict><key>first</key><false/>";
    for (int i = 0; i < others; ++i) content += "<key>k" + std::to_string(i) + "</key><integer>0</integer>";
    for (int i = others; i-- > 0;) content += "<key>k" + std::to_string(i) + "</key><integer>1</integer>";
    content += "<key>first</key><string>a</string><key>first</key><string>b</string></dict>";
    const Result<Value> read = readPropertyList(listOf(content));
    ASSERT_TRUE(read) << read.error();
    const auto& dictionary = *read->get<Dictionary>();
    EXPECT_EQ(dictionary.size(), static_cast<std::size_t>(others) + 1);
    EXPECT_EQ(dictionary.keys()[0], "first");
    EXPECT_EQ(dictionary.valueOr<std::string>("first", ""), "b");
    for (int i = 0; i < others; ++i) {
      const auto place = static_cast<std::size_t>(i) + 1;
      EXPECT_EQ(dictionary.keys()[place], "k" + std::to_string(i));
      EXPECT_TRUE(dictionary.values()[place] == Value(1)) << i;
    }
  }
}

}  // namespace
}  // namespace tallyvane::testing
