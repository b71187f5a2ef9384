#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "foundation/PropertyList.h"

namespace tallyvane {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

std::string listOf(const std::string& content) { return "<plist version=\"1.0\">" + content + "</plist>"; }

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

/// Spelt out, because Array{array} is a copy to one compiler and an array of one array to the other.
Array holding(Array array) {
  Array outer;
  outer.emplace_back(std::move(array));
  return outer;
}

struct Accepted {
  std::string content;
  Value value;
};

class AcceptedContent : public ::testing::TestWithParam<Accepted> {};

TEST_P(AcceptedContent, isReadAsItsValue) {
  const Result<Value> read = readPropertyList(listOf(GetParam().content));
  ASSERT_TRUE(read) << GetParam().content << ": " << read.error();
  EXPECT_TRUE(*read == GetParam().value) << GetParam().content;
}

INSTANTIATE_TEST_SUITE_P(
    PropertyList, AcceptedContent,
    ::testing::Values(
        Accepted{"<true/>", true}, Accepted{"<false></false>", false}, Accepted{"<true />", true},
        Accepted{"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
        Accepted{"<integer>+9223372036854775807</integer>", std::numeric_limits<std::int64_t>::max()},
        Accepted{"<integer>0x7fffFFFFffffFFFF</integer>", std::numeric_limits<std::int64_t>::max()},
        Accepted{"<integer>-0x10</integer>", -16}, Accepted{"<integer>007</integer>", 7},
        Accepted{"<real>1</real>", 1.0}, Accepted{"<real>-1.5e-3</real>", -0.0015}, Accepted{"<real>.5</real>", 0.5},
        Accepted{"<real>5e-324</real>", 5e-324}, Accepted{"<real>-INF</real>", -HUGE_VAL},
        Accepted{"<real>+infinity</real>", HUGE_VAL},
        Accepted{"<real>1.7976931348623157e308</real>", 0x1.fffffffffffffp1023},
        Accepted{"<date>2028-02-29T23:59:59Z</date>",
                 Date{std::chrono::sys_days{std::chrono::year{2028} / 2 / 29} + 86399s}},
        Accepted{"<date>1-01-01T00:00:00Z</date>", distantPast},
        Accepted{"<date>9999-12-31T23:59:59Z</date>",
                 Date{std::chrono::sys_days{std::chrono::year{10000} / 1 / 1} - 1s}},
        Accepted{"<data>\n\tAP8 Q\n\t</data>", Data{{0x00, 0xFF, 0x10}}}, Accepted{"<data>/w==</data>", Data{{0xFF}}},
        Accepted{"<data/>", Data{}}, Accepted{"<string/>", ""}, Accepted{"<string> \t\n </string>", " \t\n "},
        Accepted{"<string>a\r\nb\rc&#13;</string>", "a\nb\nc\r"},
        Accepted{"<string>&lt;&amp;&gt;&quot;&apos;&#x1F642;&#228;</string>", "<&>\"'🙂ä"},
        Accepted{"<string>Miete für <![CDATA[<b> & ]] >\r\n]]>日本 🏠</string>", "Miete für <b> & ]] >\n日本 🏠"},
        Accepted{"<string>a > b ]] &gt;\x7f\xEE\x80\x80</string>", "a > b ]] >\x7f\xEE\x80\x80"},
        Accepted{"<array/>", Array{}}, Accepted{"<dict></dict>", Dictionary{}},
        Accepted{"<!-- a --> <array ><!-- > --><true/>\n<string>x</string ></array\n><!---->", Array{true, "x"}},
        Accepted{"<dict><key>a</key><integer>1</integer> <key/><dict><key>ä&amp;</key><array/></dict></dict>",
                 Dictionary{{"a", 1}, {"", Dictionary{{"ä&", Array{}}}}}},
        Accepted{repeated("<array>", 64) + repeated("</array>", 64), [] {
                   Array nest;
                   for (int i = 1; i < 64; ++i) nest = holding(std::move(nest));
                   return nest;
                 }()}));

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

struct Refused {
  std::string content;
  std::string reason;
};

class RefusedContent : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedContent, isNoValueAndTheErrorSaysWhyAndWhere) {
  const Result<Value> read = readPropertyList(listOf("<array>\n" + GetParam().content + "</array>"));
  ASSERT_FALSE(read) << GetParam().content;
  EXPECT_THAT(read.error(), HasSubstr("line 2: ")) << GetParam().content;
  EXPECT_THAT(read.error(), HasSubstr(GetParam().reason)) << GetParam().content;
}

INSTANTIATE_TEST_SUITE_P(
    PropertyList, RefusedContent,
    ::testing::Values(
        Refused{"<integer>9223372036854775808</integer>", "does not fit"},
        Refused{"<integer>-0x8000000000000001</integer>", "does not fit"},
        Refused{"<integer>1.0</integer>", "\"1.0\" is not a whole number"}, Refused{"<integer/>", "not a whole number"},
        Refused{"<integer> 1</integer>", "not a whole number"}, Refused{"<integer>--1</integer>", "not a whole"},
        Refused{"<integer>0x</integer>", "not a whole number"}, Refused{"<real>1,5</real>", "not a number"},
        Refused{"<real>1e999</real>", "does not fit"}, Refused{"<real>infin</real>", "not a number"},
        Refused{"<real>+-1</real>", "not a number"}, Refused{"<real>nan(1)</real>", "not a number"},
        Refused{"<real></real>", "not a number"}, Refused{"<date>2027-02-29T00:00:00Z</date>", "no such date"},
        Refused{"<date>2027-03-01T24:00:00Z</date>", "no such date"},
        Refused{"<date>2027-03-01T00:00:60Z</date>", "no such date"},
        Refused{"<date>0000-03-01T00:00:00Z</date>", "no such date"},
        Refused{"<date>12027-03-01T00:00:00Z</date>", "not a date"},
        Refused{"<date>-027-03-01T00:00:00Z</date>", "not a date"}, Refused{"<date>2027-03-01</date>", "not a date"},
        Refused{"<date>2027-3-01T00:00:00Z</date>", "not a date"},
        Refused{"<date>2027-03-01T00:00:00+01:00</date>", "not a date"}, Refused{"<data>AP8</data>", "cut short"},
        Refused{"<data>A===</data>", "cut short"}, Refused{"<data>A=AA</data>", "not base64"},
        Refused{"<data>AP-_</data>", "not base64"}, Refused{"<string>\xC3</string>", "UTF-8"},
        Refused{"<string>\xE0\x82\x80</string>", "UTF-8"}, Refused{"<string>\xED\xA0\x80</string>", "UTF-8"},
        Refused{"<string>\xEF\xBF\xBF</string>", "UTF-8"}, Refused{"<string>\xF4\x90\x80\x80</string>", "UTF-8"},
        Refused{"<string>\x1B</string>", "control character"}, Refused{"<string>]]></string>", "may not be in a text"},
        Refused{"<string>&nbsp;</string>", "entities"}, Refused{"<string>a & b</string>", "&amp;"},
        Refused{"<string>&#0;</string>", "no character"}, Refused{"<string>&#xD800;</string>", "no character"},
        Refused{"<string>&#x110000;</string>", "no character"}, Refused{"<string>&#X41;</string>", "no character"},
        Refused{"<string>&#-1;</string>", "no character"}, Refused{"<string><b/></string>", "elements or comments"},
        Refused{"<string>a<!-- b --></string>", "elements or comments"}, Refused{"<string>a</integer>", "not closed"},
        Refused{"<true>yes</true>", "not closed"}, Refused{"</array>", "not closed"}, Refused{"text", "text where"},
        Refused{"<null/>", "<null> is not an element"}, Refused{"<True/>", "<True> is not an element"},
        Refused{"<key>a</key>", "only be in a <dict>"}, Refused{"<string id=\"1\">a</string>", "attribute"},
        Refused{"<dict><string>a</string></dict>", "a <key> is missing before <string>"},
        Refused{"<dict><key>a</key></dict>", "a value is missing"},
        Refused{"<dict><key>a</key><key>b</key></dict>", "only be in a <dict>"},
        Refused{"<![CDATA[a]]>", "elements and comments"}, Refused{repeated("<array>", 64), "more than 64 levels"},
        Refused{repeated("<dict><key>a</key>", 1000000), "more than 64 levels"}));

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
    EXPECT_EQ(dictionary.begin()->first, "first");
    EXPECT_EQ(dictionary.valueOr<std::string>("first", ""), "b");
    for (int i = 0; i < others; ++i) {
      const auto& [key, value] = dictionary.begin()[i + 1];
      EXPECT_EQ(key, "k" + std::to_string(i));
      EXPECT_TRUE(value == Value(1)) << key;
    }
  }
}

}  // namespace
}  // namespace tallyvane
