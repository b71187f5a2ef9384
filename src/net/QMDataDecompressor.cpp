#include "net/QMDataDecompressor.h"

#include "net/ZlibSteps.h"

namespace tallyvane {

struct QMDataDecompressor::Stream {
  z_stream state{};
  bool isOpen = false;
  std::string front;  ///< what has come while it is too short to tell a header
  bool hasBegun = false;
  bool isFinished = false;
  std::size_t given = 0;
};

QMDataDecompressor::QMDataDecompressor() : stream_(std::make_unique<Stream>()) { (void)begin(zlib::anyWrappedWindow); }

QMDataDecompressor::~QMDataDecompressor() {
  if (stream_->isOpen) inflateEnd(&stream_->state);
}

bool QMDataDecompressor::begin(int window) {
  if (stream_->isOpen) inflateEnd(&stream_->state);
  stream_->state = z_stream{};
  stream_->isOpen = inflateInit2(&stream_->state, window) == Z_OK;
  return stream_->isOpen;
}

bool QMDataDecompressor::isFinished() const { return stream_->isFinished; }

Result<std::string> QMDataDecompressor::uncompressBytes(std::string_view bytes) {
  if (!stream_->isOpen) return Error{"cannot be unpacked for want of memory"};
  constexpr std::size_t headerBytes = 2;
  if (!stream_->hasBegun) {
    stream_->front += bytes;
    if (stream_->front.size() < headerBytes) return std::string();
    bytes = stream_->front;
  }
  std::string out;
  int status = unpack(bytes, out);
  // Without a header the data is bare.
  if (status == Z_DATA_ERROR && !stream_->hasBegun && begin(zlib::rawWindow)) {
    out.clear();
    status = unpack(bytes, out);
  }
  stream_->hasBegun = true;
  stream_->given += out.size();
  if (stream_->given > maximumBytes) return Error{"holds too much when it is unpacked"};
  const bool isWell = status == Z_OK || status == Z_STREAM_END || status == Z_BUF_ERROR;
  if (!isWell) return Error{"is not well compressed"};
  stream_->isFinished = status == Z_STREAM_END || (stream_->isFinished && bytes.empty());
  return out;
}

int QMDataDecompressor::unpack(std::string_view bytes, std::string& out) {
  z_stream& state = stream_->state;
  zlib::feed(state, bytes);
  for (;;) {
    const int status = zlib::step(state, out, [](z_stream& s) { return inflate(&s, Z_NO_FLUSH); });
    if (stream_->given + out.size() > maximumBytes) return status;
    const bool isMoreToGive = status == Z_OK && (state.avail_in > 0 || state.avail_out == 0);
    const bool nextStream = status == Z_STREAM_END && state.avail_in > 0;
    if (!isMoreToGive && !nextStream) return status;
    if (nextStream) {
      const std::string_view rest = bytes.substr(bytes.size() - state.avail_in);
      if (!begin(zlib::anyWrappedWindow)) return Z_MEM_ERROR;
      zlib::feed(state, rest);
    }
  }
}

Result<std::string> QMDataDecompressor::uncompressData(std::string_view bytes) {
  QMDataDecompressor decompressor;
  Result<std::string> out = decompressor.uncompressBytes(bytes);
  if (out && !decompressor.isFinished()) return Error{"ends in the middle"};
  return out;
}

}  // namespace tallyvane
