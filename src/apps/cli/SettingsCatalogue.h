// The settings that a person may read and change: what each means, and how its value is typed and shown.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

enum class SettingKind {
  yesNo,
  number,   ///< a whole number from least to most
  path,     ///< an absolute path, or nothing
  folder,   ///< a folder, kept as a bookmark
  list,     ///< texts, typed with commas between them
  address,  ///< a mail address, or nothing
  time,     ///< an hour and a minute in the user's zone, kept as a date of which nothing else counts
};

struct Setting {
  std::string_view key;
  SettingKind kind;
  const char* meaning;  ///< in English
  int least = 0;
  int most = 0;
};

[[nodiscard]] const std::vector<Setting>& settingsCatalogue();

/// The setting of exactly this key, or of the one key that is equal but for case. Fails with the nearest one's name.
[[nodiscard]] const Setting& findSetting(const std::string& key);

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
