#pragma once

#include <functional>
#include <optional>
#include <string>

#include "foundation/Region.h"
#include "platform/Log.h"

namespace tallyvane {

/// What the user's region is told from. Each answers nothing where there is no such thing.
struct RegionSources {
  using Lookup = std::function<std::optional<std::string>(const std::string&)>;
  Lookup environment;  ///< the value of a variable
  Lookup linkTarget;   ///< what a symbolic link says, as it stands
  Lookup fileText;     ///< a small file's whole text
};

/// The region that the sources tell; the words are unset. What is set but cannot be followed goes to the log's
/// diagnostics.
///
/// Locale, one for everything: language and script of LC_ALL, else LC_MESSAGES, else LANG; "C", "POSIX" and what is no
/// locale are en_US. When LC_ALL is unset and LC_MONETARY names another country, that country's: English texts with
/// German amounts are en_DE.
///
/// Zone: TZ where it is set, as an identifier, as the path of a zone file, or as a rule of a fixed offset ("EST5"); an
/// empty one, and a rule that no zone stands for, are UTC. Else where /etc/localtime leads, else what /etc/timezone
/// says, else UTC.
[[nodiscard]] Region regionTold(const RegionSources& sources, Log& log);

/// The region of this process's environment and this machine, as of now, with the words of the language in use.
[[nodiscard]] Region systemRegion(Log& log);
/// The locale of that region, for what must know it before there is a log.
[[nodiscard]] std::string systemLocale();

}  // namespace tallyvane
