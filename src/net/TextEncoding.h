#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// How text is written into a body.
enum class TextEncoding { ascii, utf8, isoLatin1, isoLatin2, windowsLatin1, shiftJis };

/// The IANA name of the character set, in lower case.
[[nodiscard]] std::string_view ianaName(TextEncoding encoding);
/// UTF-8 text in another encoding; nothing when it is not valid UTF-8 or has a character that the encoding lacks.
[[nodiscard]] std::optional<std::string> encodedText(std::string_view text, TextEncoding encoding);

}  // namespace tallyvane
