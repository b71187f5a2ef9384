// Section 2 of QMFormDataRequest: the body.
#include <algorithm>

#include "foundation/Ascii.h"
#include "net/QMFormDataRequest.h"
#include "storage/QMUIDMaker.h"

namespace tallyvane {

namespace {

/// In groups of 8, 4, 4, 4 and 12 characters.
std::string uuid(Random& random) {
  std::string text = QMUIDMaker{random}.makeUID();
  for (const std::size_t dash : {8U, 13U, 18U, 23U}) text.insert(dash, "-");
  return text;
}

bool staysAsItIs(char c) { return isAsciiAlphanumeric(c) || c == '-' || c == '.' || c == '_'; }

}  // namespace

void QMFormDataRequest::buildPostBody() {
  if (haveBuiltPostBody()) return;
  if (postData_.empty() && fileData_.empty()) return QMHTTPRequest::buildPostBody();
  if (!fileData_.empty()) shouldStreamPostDataFromDisk = true;
  if (postFormat == PostFormat::urlEncoded) {
    buildURLEncodedPostBody();
  } else {
    buildMultipartFormDataPostBody();
  }
  QMHTTPRequest::buildPostBody();
}

void QMFormDataRequest::buildURLEncodedPostBody() {
  if (!fileData_.empty()) {  // files cannot travel in this form
    postFormat = PostFormat::multipart;
    return buildMultipartFormDataPostBody();
  }
  addRequestHeader("Content-Type",
                   "application/x-www-form-urlencoded; charset=" + std::string(ianaName(stringEncoding)));
  std::string_view separator;
  for (const TextEntry& entry : postData_) {
    appendPostString(std::string(separator) + encodeURL(entry.key) + "=" + encodeURL(entry.value));
    separator = "&";
  }
}

void QMFormDataRequest::buildMultipartFormDataPostBody() {
  const std::string boundary = "0xKhTmLbOuNdArY-" + uuid(platform_.random);
  const std::string separator = "\r\n--" + boundary + "\r\n";
  addRequestHeader("Content-Type",
                   "multipart/form-data; charset=" + std::string(ianaName(stringEncoding)) + "; boundary=" + boundary);
  std::size_t left = postData_.size() + fileData_.size();
  appendPostString("--" + boundary + "\r\n");
  for (const TextEntry& entry : postData_) {
    appendTextPart(entry);
    if (--left > 0) appendPostString(separator);
  }
  for (const FileEntry& entry : fileData_) {
    appendFilePart(entry);
    if (--left > 0) appendPostString(separator);
  }
  appendPostString("\r\n--" + boundary + "--\r\n");
}

void QMFormDataRequest::appendTextPart(const TextEntry& entry) {
  appendPostString("Content-Disposition: form-data; name=\"" + entry.key + "\"\r\n\r\n");
  appendPostString(entry.value);
}

void QMFormDataRequest::appendFilePart(const FileEntry& entry) {
  appendPostString("Content-Disposition: form-data; name=\"" + entry.key + "\"; filename=\"" + entry.fileName +
                   "\"\r\n");
  appendPostString("Content-Type: " + entry.contentType + "\r\n\r\n");
  if (const auto* file = std::get_if<FilePath>(&entry.data)) {
    appendPostDataFromFile(file->path);
  } else {
    appendPostData(std::get<std::string>(entry.data));
  }
}

void QMFormDataRequest::appendPostString(std::string_view text) {
  if (const auto bytes = encodedText(text, stringEncoding)) appendPostData(*bytes);
}

/// Characters that stay and those that do not alternate; of the latter all bytes are escaped, since in some encodings a
/// part of a character looks like a letter.
std::string QMFormDataRequest::encodeURL(std::string_view text) const {
  std::string escaped;
  while (!text.empty()) {
    const auto end = std::find_if_not(text.begin(), text.end(), staysAsItIs);
    escaped.append(text.begin(), end);
    const auto next = std::find_if(end, text.end(), staysAsItIs);
    const auto bytes = encodedText({end, next}, stringEncoding);
    if (!bytes) return {};
    for (const char c : *bytes) escaped += percentEncoded(c);
    text = {next, text.end()};
  }
  return escaped;
}

}  // namespace tallyvane
