#pragma once

#include <optional>
#include <string>

#include "platform/FileStore.h"
#include "platform/HttpTransport.h"

namespace tallyvane {

/// The bytes of a request's body, from memory or from a file, handed out piece by piece, and how fast they may be sent.
class QMInputStream : public HttpBody {
 public:
  [[nodiscard]] static QMInputStream inputStreamWithData(std::string data);
  /// The file is read while the body is sent and must not change until then; `size` is its size. The store outlives
  /// the stream.
  [[nodiscard]] static QMInputStream inputStreamWithFileAtPath(FileStore& files, std::string path, std::uint64_t size);

  /// 0 for no limit.
  void setMaximumBytesPerSecond(std::uint64_t bytes) { maximumBytesPerSecond_ = bytes; }

  [[nodiscard]] std::uint64_t size() const override { return size_; }
  [[nodiscard]] std::uint64_t bytesPerSecond() const override { return maximumBytesPerSecond_; }
  [[nodiscard]] Result<std::string> read(std::size_t most) override;
  void rewind() override { position_ = 0; }

 private:
  QMInputStream() = default;

  FileStore* files_ = nullptr;  ///< null for bytes in memory
  std::string content_;         ///< the bytes themselves, or the file's path
  std::uint64_t size_ = 0;
  std::uint64_t position_ = 0;
  std::uint64_t maximumBytesPerSecond_ = 0;
};

}  // namespace tallyvane
