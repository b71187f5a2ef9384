#pragma once

#include "platform/Bookmarks.h"

namespace tallyvane {

/// A bookmark is a property list, a dictionary whose key "URL" holds the folder's file URL. Any program of the user may
/// open any of the user's folders here, so access need not be asked for.
class FileBookmarks : public Bookmarks {
 public:
  [[nodiscard]] Data bookmark(const std::string& path) override;
  [[nodiscard]] std::optional<std::string> resolve(const Data& bookmark) override;
  void startAccessing(const std::string& /*path*/) override {}
};

}  // namespace tallyvane
