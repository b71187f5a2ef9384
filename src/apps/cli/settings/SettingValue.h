// How the value of a setting is typed and shown.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "cli/settings/SettingsCatalogue.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// "yes or no", "a whole number from 0 to 2" …, in English for programs.
[[nodiscard]] std::string kindText(const Setting& setting);

/// Reads what was typed. Fails when it is not of the setting's kind.
[[nodiscard]] Value settingInput(const Platform& platform, const Setting& setting, const std::string& text);

/// The value as it would be typed; an absent one as the model reads it: no, 0 or nothing.
[[nodiscard]] std::string settingText(const Platform& platform, const Setting& setting,
                                      const std::optional<Value>& value);
[[nodiscard]] nlohmann::ordered_json settingJson(const Platform& platform, const Setting& setting,
                                                 const std::optional<Value>& value);

}  // namespace tallyvane::cli
