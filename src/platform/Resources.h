#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyvane {

/// Pictures and templates that are installed with the programs.
class Resources {
 public:
  virtual ~Resources() = default;
  /// Absolute path of the picture with this name (a name of the icon catalogue, "mnblack", "red5.png"; an ending .png
  /// may be left out); nothing when there is no such picture.
  [[nodiscard]] virtual std::optional<std::string> picture(std::string_view name) = 0;
  /// Content of a text resource such as "template.html"; nothing when it is not there.
  [[nodiscard]] virtual std::optional<std::string> text(std::string_view name) = 0;
};

}  // namespace tallyvane
