// Header names, which are the same in any case.
#pragma once

#include <algorithm>
#include <string_view>

#include "foundation/Ascii.h"
#include "platform/HttpTransport.h"

namespace tallyvane {

[[nodiscard]] inline bool isSameHeader(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return lowerAscii(a) == lowerAscii(b); });
}

/// The value of the last header of this name; empty when there is none.
[[nodiscard]] inline std::string_view headerValue(const HttpHeaders& headers, std::string_view name) {
  std::string_view value;
  for (const auto& header : headers) {
    if (isSameHeader(header.first, name)) value = header.second;
  }
  return value;
}

}  // namespace tallyvane
