// The settings that a person may read and change, and what each means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

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

}  // namespace tallyvane::cli
