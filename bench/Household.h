#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Desktop.h"
#include "foundation/Value.h"

namespace tallyvane::bench {

/// A data folder of so many active bills: 12 to 60 payments each, names in several scripts, due dates around today and
/// some in the far future. The same for the same number every time.
class Household {
 public:
  /// With another number of payments for all bills if one is given.
  explicit Household(std::size_t bills, std::size_t paymentsEach = 0);

  /// Made at first use, kept until the next is asked for.
  static Household& of(std::size_t bills);

  [[nodiscard]] const std::string& folder() const { return scratch_.path(); }
  /// Absolute paths in the order of the index.
  [[nodiscard]] const std::vector<std::string>& billFiles() const { return billFiles_; }
  [[nodiscard]] const std::string& indexFile() const { return indexFile_; }
  [[nodiscard]] const std::string& tagFile() const { return tagFile_; }
  [[nodiscard]] Dictionary bill(std::size_t number) const;

 private:
  ScratchFolder scratch_;
  std::vector<std::string> billFiles_;
  std::string indexFile_;
  std::string tagFile_;
};

/// Opens, reads and closes each file into one reused buffer: the least that reading them takes. The bytes in all.
std::size_t readAll(const std::vector<std::string>& paths);

}  // namespace tallyvane::bench
