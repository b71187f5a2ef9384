#pragma once

#include <string>
#include <string_view>

namespace tallyvane {

/// The text as the content of an element, for what reads its texts as markup.
[[nodiscard]] std::string markupEscaped(std::string_view text);

}  // namespace tallyvane
