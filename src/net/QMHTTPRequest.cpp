#include "net/QMHTTPRequest.h"

#include <utility>

#include "net/HeaderNames.h"

namespace tallyvane {

std::shared_ptr<QMHTTPRequest> QMHTTPRequest::requestWithURL(const Platform& platform, std::string url) {
  return std::shared_ptr<QMHTTPRequest>(new QMHTTPRequest(platform, std::move(url)));
}

QMHTTPRequest::~QMHTTPRequest() { removeTemporary(); }

void QMHTTPRequest::addRequestHeader(std::string_view name, std::string value) {
  std::erase_if(requestHeaders_, [&](const auto& header) { return isSameHeader(header.first, name); });
  requestHeaders_.emplace_back(name, std::move(value));
}

void QMHTTPRequest::copySettingsFrom(const QMHTTPRequest& other) {
  requestMethod = other.requestMethod;
  username = other.username;
  password = other.password;
  timeOutSeconds = other.timeOutSeconds;
  maxUploadBytesPerSecond = other.maxUploadBytesPerSecond;
  shouldStreamPostDataFromDisk = other.shouldStreamPostDataFromDisk;
  requestBodyCoding = other.requestBodyCoding;
  allowCompressedResponse = other.allowCompressedResponse;
  delegate = other.delegate;
  requestHeaders_ = other.requestHeaders_;
}

void QMHTTPRequest::failWithError(QMHTTPRequestError error) {
  if (!error_) error_ = std::move(error);
}

}  // namespace tallyvane
