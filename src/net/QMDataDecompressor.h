#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/Result.h"

namespace tallyvane {

/// Unpacks a gzip or zlib stream, or one of bare deflated data, which is what some servers call "deflate", piece by
/// piece. Several gzip streams in a row count as one.
class QMDataDecompressor {
 public:
  /// More than this is refused: a small message can hold a flood.
  static constexpr std::size_t maximumBytes = std::size_t{64} << 20;

  QMDataDecompressor();
  ~QMDataDecompressor();
  QMDataDecompressor(const QMDataDecompressor&) = delete;
  QMDataDecompressor& operator=(const QMDataDecompressor&) = delete;

  /// What these bytes, the next ones of the stream, hold.
  [[nodiscard]] Result<std::string> uncompressBytes(std::string_view bytes);
  /// Whether the stream is whole so far.
  [[nodiscard]] bool isFinished() const;

  /// A whole stream.
  [[nodiscard]] static Result<std::string> uncompressData(std::string_view bytes);

 private:
  struct Stream;
  [[nodiscard]] bool begin(int window);
  [[nodiscard]] int unpack(std::string_view bytes, std::string& out);

  std::unique_ptr<Stream> stream_;
};

}  // namespace tallyvane
