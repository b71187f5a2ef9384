#pragma once

#include <string>
#include <string_view>

#include "foundation/Result.h"
#include "platform/FileStore.h"

namespace tallyvane {

/// Pictures of the status bar with a number drawn into them. No property of a status item shows a count in every panel;
/// its picture does. They are SVG files in a private folder, which goes with this object.
class CountPictures {
 public:
  /// The private folder is made at the first picture, inside `folder` (absolute).
  CountPictures(FileStore& files, std::string folder) : files_(files), parent_(std::move(folder)) {}
  ~CountPictures();
  CountPictures(const CountPictures&) = delete;
  CountPictures& operator=(const CountPictures&) = delete;

  struct Picture {
    std::string name;    ///< without ending; another one for another number, so that no panel keeps the old picture
    std::string folder;  ///< absolute
  };
  /// The PNG picture at `basePath` (absolute) with the digits in its lower right corner.
  [[nodiscard]] Result<Picture> draw(const std::string& basePath, std::string_view digits);

 private:
  [[nodiscard]] Result<> makeFolder();

  FileStore& files_;
  std::string parent_;
  std::string folder_;  ///< empty until it is made
};

/// Whether a status text is a number short enough to be read in a small picture.
[[nodiscard]] bool isDrawableCount(std::string_view text);

}  // namespace tallyvane
