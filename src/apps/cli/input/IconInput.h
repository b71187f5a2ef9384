#pragma once

#include <string>
#include <string_view>

#include "foundation/Region.h"
#include "foundation/Result.h"

namespace tallyvane::cli {

/// The image name of the catalogue's icon that a person means: by its number, its image name, its title in English or
/// in the user's words, the beginning of its title, or a part of it. Case does not count. A sentence, which lists the
/// candidates when there are several, where there is not exactly one.
[[nodiscard]] Result<std::string> readIcon(const Region& region, std::string_view text);

}  // namespace tallyvane::cli
