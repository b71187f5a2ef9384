#include "freedesktop/SetAside.h"

namespace tallyvane {

Result<> setAside(FileStore& files, Log& log, const std::string& path) {
  const Result<std::string> bytes = files.read(path);
  for (int number = 1;; ++number) {
    const std::string aside = path + ".unreadable-" + std::to_string(number);
    if (files.exists(aside)) {
      const Result<std::string> earlier = files.read(aside);
      if (bytes && earlier && *earlier == *bytes) return {};
      continue;
    }
    if (Result<> copied = files.copy(path, aside); !copied) {
      return Error{path + ": cannot be read, and not replaced because it cannot be kept: " + copied.error()};
    }
    log.diagnostic("Cannot be read and is about to be replaced; the old file is kept as " + aside);
    return {};
  }
}

}  // namespace tallyvane
