#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/Result.h"
#include "platform/FileStore.h"

namespace tallyvane {

/// How a body is packed, by HTTP's names; what it calls deflate is a zlib stream.
enum class ContentCoding { gzip, deflate };

[[nodiscard]] std::string_view nameOf(ContentCoding coding);

/// Packs bytes into a stream, piece by piece.
class QMDataCompressor {
 public:
  explicit QMDataCompressor(ContentCoding coding);
  ~QMDataCompressor();
  QMDataCompressor(const QMDataCompressor&) = delete;
  QMDataCompressor& operator=(const QMDataCompressor&) = delete;

  /// What these bytes add to the stream, which may be nothing yet; with `isLast` also what ends it.
  [[nodiscard]] Result<std::string> compressBytes(std::string_view bytes, bool isLast);

  [[nodiscard]] static Result<std::string> compressData(std::string_view bytes, ContentCoding coding);
  /// From a file to a temporary one of the same store; how many bytes that took.
  [[nodiscard]] static Result<std::uint64_t> compressDataFromFileToFile(FileStore& files, const std::string& from,
                                                                        const std::string& temporary,
                                                                        ContentCoding coding);

 private:
  struct Stream;
  std::unique_ptr<Stream> stream_;
};

}  // namespace tallyvane
