// Paths of the files in the data folder.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace tallyvane {

inline constexpr std::string_view dataFolderName = "Tallyvane.tvdata";
inline constexpr std::string_view billIndexName = "billindex.plist";
inline constexpr std::string_view tagIndexName = "tagindex.plist";
inline constexpr std::string_view incomeIndexName = "incomeindex.plist";
inline constexpr std::string_view mailIndexName = "mailindex.plist";

/// The data folder as QMBillsLoader::tallyvaneDirectory has it; empty, which every file operation refuses, when there
/// is none.
[[nodiscard]] std::string dataFolder(const Platform& platform);

/// The absolute path of a file directly in today's data folder. Empty when there is no data folder or the name would
/// lead out of it: nothing lands elsewhere.
[[nodiscard]] std::string pathInDataFolder(const Platform& platform, std::string_view name);

/// The file of the bill with this identifier; empty as above, and for an identifier that is empty or names another file
/// of the data folder.
[[nodiscard]] std::string billPath(const Platform& platform, std::string_view bid);

/// The same in a data folder whose path ("" for none) is at hand, for walks over many bills.
[[nodiscard]] std::string billPathIn(const std::string& folder, std::string_view bid);

}  // namespace tallyvane
