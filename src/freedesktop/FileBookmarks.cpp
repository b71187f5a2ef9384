#include "freedesktop/FileBookmarks.h"

#include "foundation/FileUrl.h"
#include "foundation/PropertyList.h"

namespace tallyvane {

namespace {

constexpr std::string_view urlKey = "URL";

}  // namespace

Data FileBookmarks::bookmark(const std::string& path) {
  const std::string text = writePropertyList(Dictionary{{std::string(urlKey), fileUrlOf(path)}});
  return Data{{text.begin(), text.end()}};
}

std::optional<std::string> FileBookmarks::resolve(const Data& bookmark) {
  const Result<Value> root = readPropertyList(std::string(bookmark.bytes.begin(), bookmark.bytes.end()));
  const auto* content = root ? root->get<Dictionary>() : nullptr;
  const auto* url = content != nullptr ? content->get<std::string>(urlKey) : nullptr;
  return url == nullptr ? std::nullopt : pathOfFileUrl(*url);
}

}  // namespace tallyvane
