// How zlib is fed and emptied, in both directions.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tallyvane::zlib {

inline constexpr std::size_t pieceSize = std::size_t{64} << 10;
inline constexpr int zlibWindow = 15;             ///< the largest window, in a zlib stream
inline constexpr int gzipWindow = 15 + 16;        ///< the same in a gzip stream
inline constexpr int anyWrappedWindow = 15 + 32;  ///< a gzip or a zlib stream, whichever comes
inline constexpr int rawWindow = -15;             ///< neither header nor check sum

inline void feed(z_stream& state, std::string_view bytes) {
  // The library takes its input as changeable, and leaves it alone.
  state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  state.avail_in = static_cast<uInt>(bytes.size());
}

/// One call of zlib; what it gives is added to `out`.
template <typename Call>
int step(z_stream& state, std::string& out, Call call) {
  const std::size_t before = out.size();
  out.resize(before + pieceSize);
  state.next_out = reinterpret_cast<Bytef*>(out.data() + before);
  state.avail_out = static_cast<uInt>(pieceSize);
  const int status = call(state);
  out.resize(out.size() - state.avail_out);
  return status;
}

}  // namespace tallyvane::zlib
