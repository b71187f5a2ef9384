#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// "file://" and the absolute path, with every byte percent-encoded that a URL's path may not hold as it is.
[[nodiscard]] std::string fileUrlOf(std::string_view path);

/// The absolute path of a local file URL (no host, or "localhost"), without a slash at its end; nothing for any other
/// text, and for a path with a null byte.
[[nodiscard]] std::optional<std::string> pathOfFileUrl(std::string_view url);

}  // namespace tallyvane
