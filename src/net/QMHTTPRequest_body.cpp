// Section 2 of QMHTTPRequest: the body.
#include <utility>

#include "net/QMHTTPRequest.h"
#include "net/QMInputStream.h"

namespace tallyvane {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} << 10;

QMHTTPRequestError notBuilt(const std::string& reason) {
  return {
      .code = QMHTTPRequestError::bodyNotBuilt, .description = "The request body could not be built", .reason = reason};
}

/// Without its dot; empty when the last component of the path has none.
std::string_view extensionOf(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

}  // namespace

void QMHTTPRequest::appendPostData(std::string_view bytes) {
  if (!shouldStreamPostDataFromDisk && temporary_.empty()) {
    postBody_ += bytes;
    return;
  }
  addToTemporary(bytes);
}

void QMHTTPRequest::addToTemporary(std::string_view bytes) {
  if (error_) return;
  if (temporary_.empty()) {
    const Result<std::string> made = platform_.files.makeTemporary();
    if (!made) return failWithError(notBuilt(made.error()));
    temporary_ = *made;
    addToTemporary(std::exchange(postBody_, std::string()));
  }
  const Result<> added = platform_.files.append(temporary_, bytes);
  if (!added) return failWithError(notBuilt(added.error()));
  postLength_ += bytes.size();
}

void QMHTTPRequest::appendPostDataFromFile(const std::string& path) {
  for (std::uint64_t position = 0; !error_;) {
    const Result<std::string> piece = platform_.files.readPart(path, position, pieceSize);
    if (!piece) return failWithError(notBuilt(piece.error()));
    if (piece->empty()) return;
    appendPostData(*piece);
    position += piece->size();
  }
}

void QMHTTPRequest::buildPostBody() {
  if (haveBuiltPostBody_) return;
  if (temporary_.empty()) postLength_ = postBody_.size();
  if (requestBodyCoding && postLength_ > 0) compressPostBody();
  haveBuiltPostBody_ = true;
}

void QMHTTPRequest::compressPostBody() {
  const Result<> packed = temporary_.empty() ? compressInMemory() : compressOnDisk();
  if (!packed) return failWithError(notBuilt(packed.error()));
  addRequestHeader("Content-Encoding", std::string(nameOf(*requestBodyCoding)));
}

Result<> QMHTTPRequest::compressInMemory() {
  Result<std::string> packed = QMDataCompressor::compressData(postBody_, *requestBodyCoding);
  if (!packed) return Error{packed.error()};
  postBody_ = std::move(*packed);
  postLength_ = postBody_.size();
  return {};
}

Result<> QMHTTPRequest::compressOnDisk() {
  const Result<std::string> made = platform_.files.makeTemporary();
  if (!made) return Error{made.error()};
  const Result<std::uint64_t> length =
      QMDataCompressor::compressDataFromFileToFile(platform_.files, temporary_, *made, *requestBodyCoding);
  removeTemporary();
  temporary_ = *made;
  if (!length) return Error{length.error()};
  postLength_ = *length;
  return {};
}

std::string QMHTTPRequest::postBody() const {
  if (temporary_.empty()) return postBody_;
  Result<std::string> bytes = platform_.files.read(temporary_);
  return bytes ? *bytes : std::string();
}

void QMHTTPRequest::removeTemporary() {
  if (temporary_.empty()) return;
  const Result<> removed = platform_.files.remove(std::exchange(temporary_, std::string()));
  if (!removed) platform_.log.diagnostic("A temporary file stays behind: " + removed.error());
}

std::optional<QMInputStream> QMHTTPRequest::bodyStream() const {
  if (postLength_ == 0) return std::nullopt;
  QMInputStream stream = temporary_.empty()
                             ? QMInputStream::inputStreamWithData(postBody_)
                             : QMInputStream::inputStreamWithFileAtPath(platform_.files, temporary_, postLength_);
  stream.setMaximumBytesPerSecond(maxUploadBytesPerSecond);
  return stream;
}

std::optional<std::string> QMHTTPRequest::mimeTypeForFileAtPath(const Platform& platform, const std::string& path) {
  if (!platform.files.exists(path)) return std::nullopt;
  return platform.mimeTypes.typeForExtension(extensionOf(path)).value_or("application/octet-stream");
}

}  // namespace tallyvane
