// A body is as long as it says, and whoever reads it finds what was put in.
#include <algorithm>
#include <vector>

#include "Fuzzed.h"
#include "foundation/Texts.h"
#include "net/HeaderNames.h"
#include "net/QMDataDecompressor.h"
#include "net/QMFormDataRequest.h"
#include "support/Fakes.h"

namespace tallyvane::fuzz {

namespace {

constexpr const char* uploaded = "/f/a.pdf";

void addEntry(QMFormDataRequest& form, std::string_view entry) {
  const std::size_t equals = std::min(entry.find('='), entry.size());
  const std::string key(entry.substr(std::min<std::size_t>(1, equals), equals - std::min<std::size_t>(1, equals)));
  const std::string content(entry.substr(std::min(equals + 1, entry.size())));
  switch (entry.empty() ? 0 : entry.front() % 6) {
    case 0:
      return form.addPostValueForKey(content, key);
    case 1:
      return form.setPostValueForKey(content, key);
    case 2:
      return form.addDataForKey(content, key);
    case 3:
      return form.setDataWithFileNameAndContentTypeForKey(content, key, "text/plain", key);
    case 4:
      return form.addFileForKey(content.empty() ? uploaded : content, key);
    default:
      return form.addFileWithFileNameAndContentTypeForKey(uploaded, content, std::nullopt, key);
  }
}

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      constexpr std::string_view plainMarks = "-._";
      const bool isPlain = plainMarks.find(text[at]) != std::string_view::npos ||
                           (text[at] >= '0' && text[at] <= '9') || (text[at] >= 'A' && text[at] <= 'Z') ||
                           (text[at] >= 'a' && text[at] <= 'z');
      require(isPlain, "not escaped");
      plain += text[at];
      continue;
    }
    require(at + 2 < text.size(), "an escape is cut short");
    plain += static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16));
    at += 2;
  }
  return plain;
}

/// Of texts that are not valid UTF-8 the body has nothing.
void checkEscaped(const QMFormDataRequest& form, std::string_view body) {
  const auto expected = [](const std::string& text) { return isValidUtf8(text) ? text : std::string(); };
  for (const QMFormDataRequest::TextEntry& entry : form.postData()) {
    const std::size_t end = std::min(body.find('&'), body.size());
    const std::string_view pair = body.substr(0, end);
    const std::size_t equals = pair.find('=');
    require(equals != std::string_view::npos, "a key has no value");
    require(unescaped(pair.substr(0, equals)) == expected(entry.key), "another key: " + entry.key);
    require(unescaped(pair.substr(equals + 1)) == expected(entry.value), "another value: " + entry.value);
    body.remove_prefix(std::min(end + 1, body.size()));
  }
  require(body.empty(), "something follows the last value");
}

void checkParts(const QMFormDataRequest& form, std::string_view type, std::string_view body) {
  constexpr std::string_view name = "boundary=";
  const std::size_t at = type.find(name);
  require(at != std::string_view::npos, "no boundary");
  const std::string boundary = "--" + std::string(type.substr(at + name.size()));
  require(body.starts_with(boundary + "\r\n") && body.ends_with("\r\n" + boundary + "--\r\n"), "not framed");
  std::size_t parts = 0;
  for (std::size_t from = 0; (from = body.find(boundary + "\r\n", from)) != std::string_view::npos; ++from) ++parts;
  require(parts >= form.postData().size() + form.fileData().size(), "a part is missing");
}

}  // namespace

void formBody(std::string_view bytes) {
  const unsigned how = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front());
  testing::FakeDesktop desktop;
  (void)desktop.files.createFolder("/f");
  desktop.files.content[uploaded] = "PDF\r\n%";
  const auto form = QMFormDataRequest::requestWithURL(desktop.platform, "https://mail.example/send");
  form->postFormat = (how & 1U) != 0 ? QMFormDataRequest::PostFormat::multipart : form->postFormat;
  form->shouldStreamPostDataFromDisk = (how & 2U) != 0;
  if ((how & 4U) != 0) form->requestBodyCoding = (how & 64U) != 0 ? ContentCoding::deflate : ContentCoding::gzip;
  form->stringEncoding = static_cast<TextEncoding>((how >> 3U) % 6);
  for (std::size_t at = 1; at < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\xFF', at), bytes.size());
    addEntry(*form, bytes.substr(at, end - at));
    at = end + 1;
  }
  form->buildPostBody();
  if (form->error()) return;  // of a file that is not there
  std::string body = form->postBody();
  require(form->postLength() == body.size(), "another length");
  if (form->requestBodyCoding && !body.empty()) {
    const Result<std::string> unpacked = QMDataDecompressor::uncompressData(body);
    require(static_cast<bool>(unpacked), "does not unpack: " + unpacked.error());
    body = *unpacked;
  }
  const std::string type(headerValue(form->requestHeaders(), "content-type"));
  if (type.starts_with("multipart/")) return checkParts(*form, type, body);
  if (form->stringEncoding == TextEncoding::utf8) checkEscaped(*form, body);
}

}  // namespace tallyvane::fuzz
