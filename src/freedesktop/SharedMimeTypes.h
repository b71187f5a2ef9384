#pragma once

#include <map>
#include <string>
#include <vector>

#include "freedesktop/XdgFolders.h"
#include "platform/FileStore.h"
#include "platform/MimeTypes.h"

namespace tallyvane {

/// The shared MIME database, read at the first question. The user's own entries go before the system's, and in one
/// folder those of the greater weight before the others.
class SharedMimeTypes : public MimeTypes {
 public:
  SharedMimeTypes(const XdgFolders& folders, FileStore& files);
  [[nodiscard]] std::optional<std::string> typeForExtension(std::string_view extension) override;

 private:
  struct Known {
    std::string type;
    int weight;
    std::size_t folder;
  };
  void readGlobs(std::size_t folder);
  void note(std::string_view line, std::size_t folder);

  std::vector<std::string> globFiles_;
  FileStore& files_;
  bool wasRead_ = false;
  std::map<std::string, Known, std::less<>> types_;  ///< by extension, in lower case
};

}  // namespace tallyvane
