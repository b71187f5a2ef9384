#include "freedesktop/CountPictures.h"

#include <fmt/format.h>

#include <cstdlib>

#include "foundation/Base64.h"
#include "freedesktop/FileDescriptor.h"
#include "freedesktop/PosixPaths.h"

namespace tallyvane {

namespace {

constexpr std::size_t mostDigits = 3;

/// Drawn at twice the 22 pixels of a usual panel: the picture, and over its lower right corner a badge that grows with
/// the digits, so that they stay as large as they can.
std::string drawing(std::string_view png, std::string_view digits) {
  const int width = digits.size() == 1 ? 24 : digits.size() == 2 ? 34 : 44;
  const int fontSize = digits.size() == 3 ? 23 : 25;
  const int left = 44 - width;
  std::string encoded;
  appendBase64(encoded, png);
  return fmt::format(
      R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="44" height="44" viewBox="0 0 44 44">
<image width="44" height="44" xlink:href="data:image/png;base64,{}"/>
<rect x="{}" y="18" width="{}" height="26" rx="7" fill="#c01c28"/>
<text x="{}" y="40" text-anchor="middle" font-family="sans-serif" font-weight="bold" font-size="{}" fill="#ffffff">{}</text>
</svg>
)",
      encoded, left, width, left + width / 2, fontSize, digits);
}

}  // namespace

bool isDrawableCount(std::string_view text) {
  return !text.empty() && text.size() <= mostDigits && text.find_first_not_of("0123456789") == std::string_view::npos;
}

CountPictures::~CountPictures() {
  if (!folder_.empty()) (void)files_.remove(folder_);
}

Result<CountPictures::Picture> CountPictures::draw(const std::string& basePath, std::string_view digits) {
  const auto png = files_.read(basePath);
  if (!png) return Error{png.error()};
  if (auto made = makeFolder(); !made) return Error{made.error()};
  const std::string base = nameOf(basePath);
  Picture picture{fmt::format("{}-{}", base.substr(0, base.rfind('.')), digits), folder_};
  const std::string path = folder_ + "/" + picture.name + ".svg";
  if (auto saved = files_.save(path, drawing(*png, digits), Durability::cached); !saved) return Error{saved.error()};
  return picture;
}

Result<> CountPictures::makeFolder() {
  if (!folder_.empty()) return {};
  std::string path = parent_ + "/tallyvane-XXXXXX";
  if (::mkdtemp(path.data()) == nullptr) return systemError(parent_);
  folder_ = path;
  return {};
}

}  // namespace tallyvane
