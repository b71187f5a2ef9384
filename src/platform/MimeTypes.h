#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// The desktop's registry of file types.
class MimeTypes {
 public:
  virtual ~MimeTypes() = default;
  /// The preferred MIME type of files with this extension (without its dot, letters in either case); nothing when the
  /// registry knows none.
  [[nodiscard]] virtual std::optional<std::string> typeForExtension(std::string_view extension) = 0;
};

}  // namespace tallyvane
