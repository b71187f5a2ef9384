#include "net/QMDataCompressor.h"

#include "net/ZlibSteps.h"

namespace tallyvane {

struct QMDataCompressor::Stream {
  z_stream state{};
  int ready = Z_STREAM_ERROR;
};

std::string_view nameOf(ContentCoding coding) { return coding == ContentCoding::gzip ? "gzip" : "deflate"; }

QMDataCompressor::QMDataCompressor(ContentCoding coding) : stream_(std::make_unique<Stream>()) {
  const int window = coding == ContentCoding::gzip ? zlib::gzipWindow : zlib::zlibWindow;
  constexpr int usualMemory = 8;
  stream_->ready =
      deflateInit2(&stream_->state, Z_DEFAULT_COMPRESSION, Z_DEFLATED, window, usualMemory, Z_DEFAULT_STRATEGY);
}

QMDataCompressor::~QMDataCompressor() {
  if (stream_->ready == Z_OK) deflateEnd(&stream_->state);
}

Result<std::string> QMDataCompressor::compressBytes(std::string_view bytes, bool isLast) {
  if (stream_->ready != Z_OK) return Error{"cannot be compressed for want of memory"};
  std::string packed;
  zlib::feed(stream_->state, bytes);
  int status = Z_OK;
  do {
    status = zlib::step(stream_->state, packed,
                        [&](z_stream& state) { return deflate(&state, isLast ? Z_FINISH : Z_NO_FLUSH); });
  } while (status == Z_OK && stream_->state.avail_out == 0);
  if (status == Z_STREAM_ERROR) return Error{"cannot be compressed"};
  return packed;
}

Result<std::string> QMDataCompressor::compressData(std::string_view bytes, ContentCoding coding) {
  return QMDataCompressor(coding).compressBytes(bytes, true);
}

Result<std::uint64_t> QMDataCompressor::compressDataFromFileToFile(FileStore& files, const std::string& from,
                                                                   const std::string& temporary, ContentCoding coding) {
  QMDataCompressor compressor(coding);
  std::uint64_t written = 0;
  for (std::uint64_t position = 0;;) {
    const Result<std::string> piece = files.readPart(from, position, zlib::pieceSize);
    if (!piece) return Error{piece.error()};
    const Result<std::string> packed = compressor.compressBytes(*piece, piece->empty());
    if (!packed) return Error{from + ": " + packed.error()};
    if (const Result<> added = files.append(temporary, *packed); !added) return Error{added.error()};
    written += packed->size();
    if (piece->empty()) return written;
    position += piece->size();
  }
}

}  // namespace tallyvane
