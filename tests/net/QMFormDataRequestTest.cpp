#include "net/QMFormDataRequest.h"

#include <gmock/gmock.h>

#include "support/Matchers.h"
#include "support/Requests.h"

namespace tallyvane::testing {
namespace {

using ::testing::Field;

TEST_F(Forms, TextsAreEscapedInTheOrderAdded) {
  form->addPostValueForKey(1, "a");
  form->addPostValueForKey("x y&z", "b");
  form->addPostValueForKey("lost", std::nullopt);
  EXPECT_EQ(built(), "a=1&b=x%20y%26z");
  EXPECT_EQ(contentType(), "application/x-www-form-urlencoded; charset=utf-8");
  EXPECT_EQ(form->requestMethod, "POST");
  EXPECT_EQ(form->postLength(), 15U);
  form->buildPostBody();
  EXPECT_EQ(form->postBody(), "a=1&b=x%20y%26z");
}

TEST_F(Forms, ValuesAreSentByTheirDescriptions) {
  const Date date = std::chrono::sys_days{std::chrono::year{2027} / 3 / 10} + std::chrono::hours{17};
  const std::pair<Value, const char*> cases[] = {{-7, "-7"},
                                                 {true, "1"},
                                                 {2.5, "2.5"},
                                                 {0.1 + 0.2, "0.3"},
                                                 {1e5, "100000"},
                                                 {1e15, "1000000000000000"},
                                                 {date, "2027-03-10 17:00:00 +0000"}};
  for (const auto& [value, text] : cases) {
    form->setPostValueForKey(value, "k");
    EXPECT_EQ(form->postData().back().value, text);
  }
}

TEST_F(Forms, EscapingLeavesOnlyLettersDigitsAndThreeMarks) {
  const std::string plain = "abzABZ019-._";
  EXPECT_EQ(form->encodeURL(plain), plain);
  for (const char c : std::string(":/?#[]@!$ &'()*+,;=\"<>%{}|\\^~`\x01\x1f\x7f")) {
    char expected[4];
    std::snprintf(expected, sizeof expected, "%%%02X", static_cast<unsigned>(c));
    EXPECT_EQ(form->encodeURL(std::string(1, c)), expected);
  }
  const struct {
    TextEncoding encoding;
    const char* text;
    const char* escaped;
    const char* type;
  } cases[] = {{TextEncoding::utf8, "Bücher€\n", "B%C3%BCcher%E2%82%AC%0A", "utf-8"},
               {TextEncoding::utf8, "\xff", "", "utf-8"},
               {TextEncoding::isoLatin1, "ü", "%FC", "iso-8859-1"},
               {TextEncoding::isoLatin1, "ü€", "", "iso-8859-1"},
               {TextEncoding::isoLatin2, "ł", "%B3", "iso-8859-2"},
               {TextEncoding::windowsLatin1, "€", "%80", "windows-1252"},
               {TextEncoding::shiftJis, "ア", "%83%41", "shift_jis"},
               {TextEncoding::ascii, "é", "", "us-ascii"}};
  for (const auto& c : cases) {
    form = QMFormDataRequest::requestWithURL(desktop.platform, "https://mail/send");
    form->stringEncoding = c.encoding;
    form->addPostValueForKey(c.text, "k");
    EXPECT_EQ(built(), std::string("k=") + c.escaped) << c.text;
    EXPECT_EQ(contentType(), std::string("application/x-www-form-urlencoded; charset=") + c.type);
  }
}

TEST_F(Forms, OneTextAloneInPartsHasNoSeparatorBehindIt) {
  form->postFormat = QMFormDataRequest::PostFormat::multipart;
  form->addPostValueForKey("v & v", "k");
  const std::string body = built();
  const std::string boundary =
      contentType().substr(std::string("multipart/form-data; charset=utf-8; boundary=").size());
  EXPECT_THAT(boundary, MatchesRegex("0xKhTmLbOuNdArY-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
  EXPECT_EQ(body, "--" + boundary + "\r\nContent-Disposition: form-data; name=\"k\"\r\n\r\nv & v\r\n--" + boundary +
                      "--\r\n");
}

TEST_F(Forms, FilesTurnItIntoPartsThatAreGatheredOnDisk) {
  form->addPostValueForKey(2.5, "n");
  form->addFileForKey("/f/a.pdf", "receipt");
  form->addDataForKey("raw", "d\"q");
  form->addFileWithFileNameAndContentTypeForKey("/f/a.pdf", "b", "text/x", "e");
  const std::string body = built();
  EXPECT_EQ(desktop.files.temporariesLeft(), 1);
  EXPECT_EQ(form->postLength(), body.size());
  EXPECT_EQ(form->postFormat, QMFormDataRequest::PostFormat::multipart);
  const std::string b = contentType().substr(contentType().find("0xKh"));
  const std::string next = "\r\n--" + b + "\r\nContent-Disposition: form-data; name=\"";
  EXPECT_EQ(body, next.substr(2) + "n\"\r\n\r\n2.5" + next +
                      "receipt\"; filename=\"a.pdf\"\r\nContent-Type: application/pdf\r\n\r\nPDF\r\n%" + next +
                      "d\"q\"; filename=\"file\"\r\nContent-Type: application/octet-stream\r\n\r\nraw" + next +
                      "e\"; filename=\"b\"\r\nContent-Type: text/x\r\n\r\nPDF\r\n%\r\n--" + b + "--\r\n");
  form->startSynchronous();
  EXPECT_EQ(desktop.http.sent.back(), body);
  EXPECT_EQ(desktop.files.temporariesLeft(), 0);
}

TEST_F(Forms, SettingLeavesOneEntryOfTheKeyAtTheEnd) {
  for (const char* value : {"1", "2", "3"}) form->addPostValueForKey(value, "k");
  form->addPostValueForKey("x", "other");
  form->setPostValueForKey("4", "k");
  EXPECT_THAT(form->postData(), ElementsAre(Field(&QMFormDataRequest::TextEntry::value, "x"),
                                            Field(&QMFormDataRequest::TextEntry::value, "4")));
  form->addFileForKey("/f/a.pdf", "k");
  form->addDataForKey("1", "k");
  form->setFileForKey("/f/a.pdf", "k");
  EXPECT_EQ(form->fileData().size(), 1U);
  form->setDataForKey("2", "k");
  EXPECT_THAT(form->fileData(), ElementsAre(Field(&QMFormDataRequest::FileEntry::fileName, "file")));
  const auto copy = form->copyWithZone();
  form->setPostValueForKey("5", "k");
  EXPECT_EQ(copy->postData().back().value, "4");
  EXPECT_EQ(copy->fileData().size(), 1U);
  EXPECT_EQ(copy->url, "https://mail/send");
}

TEST_F(Forms, AFileThatIsNotThereFailsTheRequestAndIsAddedAllTheSame) {
  for (const std::string path : {"/f/none.pdf", "/f"}) {
    int failed = 0;
    form = QMFormDataRequest::requestWithURL(desktop.platform, "https://mail/send");
    form->addFileForKey(path, "k");
    form->setFailedBlock([&] { ++failed; });
    ASSERT_TRUE(form->error());
    EXPECT_EQ(form->error()->domain, "QMHTTPRequestErrorDomain");
    EXPECT_EQ(form->error()->code, 6);
    EXPECT_EQ(form->error()->description, "No file exists at " + path);
    EXPECT_EQ(form->fileData().at(0).contentType, "application/octet-stream");
    form->startSynchronous();
    EXPECT_EQ(failed, 1);
  }
  EXPECT_TRUE(desktop.http.exchanges.empty());
}

TEST_F(Forms, WhateverFailsOnDiskFailsTheRequestAndLeavesNoFileBehind) {
  bool hasSucceeded = false;
  for (int call = 1; !hasSucceeded; ++call) {
    FailingFileStore failing(desktop.files, call);
    const Platform platform = desktop.over(failing);
    form = QMFormDataRequest::requestWithURL(platform, "https://mail/send");
    form->requestBodyCoding = ContentCoding::gzip;
    form->addFileForKey("/f/a.pdf", "k");
    form->startSynchronous();
    form.reset();
    hasSucceeded = failing.calls() < call;
    // Only where the removal itself fails, a file stays, and the log says so.
    EXPECT_EQ(desktop.files.temporariesLeft(), static_cast<int>(desktop.log.diagnostics.size())) << call;
    EXPECT_LT(call, 40);
  }
}

}  // namespace
}  // namespace tallyvane::testing
