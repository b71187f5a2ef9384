#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/Result.h"
#include "platform/FileStore.h"

namespace tallyvane {

/// Packs bytes into a gzip stream, piece by piece.
class QMDataCompressor {
 public:
  QMDataCompressor();
  ~QMDataCompressor();
  QMDataCompressor(const QMDataCompressor&) = delete;
  QMDataCompressor& operator=(const QMDataCompressor&) = delete;

  /// What these bytes add to the stream, which may be nothing yet; with `isLast` also what ends it.
  [[nodiscard]] Result<std::string> compressBytes(std::string_view bytes, bool isLast);

  [[nodiscard]] static Result<std::string> compressData(std::string_view bytes);
  /// From a file to a temporary one of the same store; how many bytes that took.
  [[nodiscard]] static Result<std::uint64_t> compressDataFromFileToFile(FileStore& files, const std::string& from,
                                                                        const std::string& temporary);

 private:
  struct Stream;
  std::unique_ptr<Stream> stream_;
};

}  // namespace tallyvane
