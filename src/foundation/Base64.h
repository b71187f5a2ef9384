#pragma once

#include <string>
#include <string_view>

namespace tallyvane {

/// What stands for 0 to 63.
inline constexpr std::string_view base64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// On one line, filled up with '='.
void appendBase64(std::string& to, std::string_view bytes);

}  // namespace tallyvane
