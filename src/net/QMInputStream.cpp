#include "net/QMInputStream.h"

#include <algorithm>
#include <utility>

namespace tallyvane {

QMInputStream QMInputStream::inputStreamWithData(std::string data) {
  QMInputStream stream;
  stream.size_ = data.size();
  stream.content_ = std::move(data);
  return stream;
}

QMInputStream QMInputStream::inputStreamWithFileAtPath(FileStore& files, std::string path, std::uint64_t size) {
  QMInputStream stream;
  stream.files_ = &files;
  stream.size_ = size;
  stream.content_ = std::move(path);
  return stream;
}

Result<std::string> QMInputStream::read(std::size_t most) {
  const std::uint64_t count = std::min<std::uint64_t>(most, size_ - position_);
  if (count == 0) return std::string();
  Result<std::string> piece = files_ == nullptr
                                  ? Result<std::string>(content_.substr(position_, count))
                                  : files_->readPart(content_, position_, static_cast<std::size_t>(count));
  if (!piece) return piece;
  if (piece->empty()) return Error{content_ + ": has become shorter while it was sent"};
  position_ += piece->size();
  return piece;
}

}  // namespace tallyvane
