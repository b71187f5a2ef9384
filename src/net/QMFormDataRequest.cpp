// Section 1 of QMFormDataRequest: what is posted.
#include "net/QMFormDataRequest.h"

#include <fmt/format.h>

#include <utility>

#include "schedule/DateDescription.h"

namespace tallyvane {

namespace {

constexpr const char* unknownType = "application/octet-stream";

/// Texts as they are, numbers in up to 16 significant digits, 1 and 0 for a bool, dates in UTC.
std::string textForm(const Value& value) {
  if (const auto* text = value.get<std::string>()) return *text;
  if (const auto* number = value.get<std::int64_t>()) return std::to_string(*number);
  if (const auto* boolean = value.get<bool>()) return *boolean ? "1" : "0";
  if (const auto* real = value.get<double>()) return fmt::format("{:.16g}", *real);
  if (const auto* date = value.get<Date>()) return dateDescription(*date);
  return {};
}

}  // namespace

QMFormDataRequest::QMFormDataRequest(const Platform& platform, std::string address)
    : QMHTTPRequest(platform, std::move(address)) {
  requestMethod = "POST";
}

std::shared_ptr<QMFormDataRequest> QMFormDataRequest::requestWithURL(const Platform& platform, std::string url) {
  return std::shared_ptr<QMFormDataRequest>(new QMFormDataRequest(platform, std::move(url)));
}

void QMFormDataRequest::addPostValueForKey(const Value& value, const Key& key) {
  if (key) postData_.push_back({*key, textForm(value)});
}

void QMFormDataRequest::setPostValueForKey(const Value& value, const Key& key) {
  std::erase_if(postData_, [&](const TextEntry& entry) { return entry.key == key; });
  addPostValueForKey(value, key);
}

void QMFormDataRequest::addFileForKey(const std::string& path, const Key& key) {
  addFileWithFileNameAndContentTypeForKey(path, std::nullopt, std::nullopt, key);
}

void QMFormDataRequest::addFileWithFileNameAndContentTypeForKey(const std::string& path, const Name& fileName,
                                                                const Name& contentType, const Key& key) {
  if (!key) return;
  if (!platform_.files.exists(path) || platform_.files.isFolder(path)) {
    failWithError({.code = QMHTTPRequestError::bodyNotBuilt, .description = "No file exists at " + path, .reason = {}});
  }
  const std::string type = contentType ? *contentType : mimeTypeForFileAtPath(platform_, path).value_or(unknownType);
  fileData_.push_back({*key, fileName.value_or(path.substr(path.rfind('/') + 1)), type, FilePath{path}});
}

void QMFormDataRequest::setFileForKey(const std::string& path, const Key& key) {
  setFileWithFileNameAndContentTypeForKey(path, std::nullopt, std::nullopt, key);
}

void QMFormDataRequest::setFileWithFileNameAndContentTypeForKey(const std::string& path, const Name& fileName,
                                                                const Name& contentType, const Key& key) {
  removeFilesOfKey(key);
  addFileWithFileNameAndContentTypeForKey(path, fileName, contentType, key);
}

void QMFormDataRequest::addDataForKey(std::string data, const Key& key) {
  addDataWithFileNameAndContentTypeForKey(std::move(data), "file", std::nullopt, key);
}

void QMFormDataRequest::addDataWithFileNameAndContentTypeForKey(std::string data, const Name& fileName,
                                                                const Name& contentType, const Key& key) {
  if (!key) return;
  fileData_.push_back({*key, fileName.value_or("file"), contentType.value_or(unknownType), std::move(data)});
}

void QMFormDataRequest::setDataForKey(std::string data, const Key& key) {
  setDataWithFileNameAndContentTypeForKey(std::move(data), "file", std::nullopt, key);
}

void QMFormDataRequest::setDataWithFileNameAndContentTypeForKey(std::string data, const Name& fileName,
                                                                const Name& contentType, const Key& key) {
  removeFilesOfKey(key);
  addDataWithFileNameAndContentTypeForKey(std::move(data), fileName, contentType, key);
}

void QMFormDataRequest::removeFilesOfKey(const Key& key) {
  std::erase_if(fileData_, [&](const FileEntry& entry) { return entry.key == key; });
}

std::shared_ptr<QMFormDataRequest> QMFormDataRequest::copyWithZone() const {
  auto copy = requestWithURL(platform_, url);
  copy->copySettingsFrom(*this);
  copy->postFormat = postFormat;
  copy->stringEncoding = stringEncoding;
  copy->postData_ = postData_;
  copy->fileData_ = fileData_;
  return copy;
}

}  // namespace tallyvane
