#include "foundation/FileUrl.h"

#include <charconv>

#include "foundation/Ascii.h"
#include "foundation/Paths.h"

namespace tallyvane {

namespace {

constexpr std::string_view scheme = "file://";

bool standsAsItIs(char c) {
  return isAsciiAlphanumeric(c) || std::string_view("/-._~!$&'()*+,;=:@").find(c) != std::string_view::npos;
}

/// Nothing when a per cent sign is not followed by two hexadecimal digits, or stands for a null byte.
std::optional<std::string> percentDecoded(std::string_view text) {
  std::string decoded;
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    unsigned byte = 0;
    const char* end = text.data() + i + 3;
    const auto read = std::from_chars(text.data() + i + 1, end, byte, 16);
    if (read.ec != std::errc() || read.ptr != end || byte == 0) return std::nullopt;
    decoded += static_cast<char>(byte);
    i += 2;
  }
  return decoded;
}

}  // namespace

std::string fileUrlOf(std::string_view path) {
  std::string url(scheme);
  for (const char c : path) {
    if (standsAsItIs(c)) {
      url += c;
    } else {
      url += percentEncoded(c);
    }
  }
  return url;
}

std::optional<std::string> pathOfFileUrl(std::string_view url) {
  if (!url.starts_with(scheme)) return std::nullopt;
  url.remove_prefix(scheme.size());
  constexpr std::string_view localHost = "localhost/";
  if (url.starts_with(localHost)) url.remove_prefix(localHost.size() - 1);
  if (!url.starts_with('/')) return std::nullopt;
  std::optional<std::string> path = percentDecoded(url);
  if (path) path = withoutTrailingSlashes(std::move(*path));
  return path;
}

}  // namespace tallyvane
