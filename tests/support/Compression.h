// Pieces of compressed text.
#pragma once

#include <gmock/gmock.h>
#include <zlib.h>

#include <random>

#include "net/QMDataCompressor.h"
#include "net/QMDataDecompressor.h"
#include "net/QMInputStream.h"
#include "support/InMemoryFileStore.h"

namespace tallyvane::testing {

inline std::string noise(std::size_t size) {
  std::mt19937 random(7);
  std::string bytes(size, '\0');
  for (char& c : bytes) c = static_cast<char>(random() % 64);
  return bytes;
}

/// Packed by zlib's one-call function, not by the code under test. Window 15 is zlib's own form, -15 bare data.
inline std::string packedBy(int window, std::string text) {
  z_stream state{};
  deflateInit2(&state, 9, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY);
  std::string out(text.size() + 1000, '\0');
  state.next_in = reinterpret_cast<Bytef*>(text.data());
  state.avail_in = static_cast<uInt>(text.size());
  state.next_out = reinterpret_cast<Bytef*>(out.data());
  state.avail_out = static_cast<uInt>(out.size());
  deflate(&state, Z_FINISH);
  out.resize(state.total_out);
  deflateEnd(&state);
  return out;
}

inline Result<std::string> unpackedInSteps(std::string_view packed, std::size_t step) {
  QMDataDecompressor decompressor;
  std::string out;
  for (std::size_t at = 0; at < packed.size(); at += step) {
    const Result<std::string> piece = decompressor.uncompressBytes(packed.substr(at, step));
    if (!piece) return piece;
    out += *piece;
  }
  return decompressor.isFinished() ? Result<std::string>(out) : Error{"unfinished"};
}

}  // namespace tallyvane::testing
