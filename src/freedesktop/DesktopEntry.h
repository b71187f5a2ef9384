// An installed application as its desktop entry file describes it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Result.h"

namespace tallyvane {

struct DesktopEntry {
  std::string id;    ///< such as "org.example.Viewer.desktop"
  std::string path;  ///< of its file
  std::string name;
  std::string icon;
  std::string exec;     ///< its command line, with field codes and quotes as they stand
  std::string tryExec;  ///< a program without which the application is not there; may be empty
  bool hidden = false;  ///< counts as not installed
  bool terminal = false;
  bool dbusActivatable = false;
  std::vector<std::string> mimeTypes;
};

/// The entry of a file's text, without identifier and path; nothing when it is not an application's. A
/// hidden one needs to say nothing else.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

/// The entry's command for one URL, program first: quotes and escapes undone, field codes replaced. %u and %U are the
/// URL, %f and %F the path of a file URL and nothing for any other. An error when there is no program or a quote is not
/// closed.
[[nodiscard]] Result<std::vector<std::string>> commandForUrl(const DesktopEntry& entry, const std::string& url);

/// The bus name and object path at which the application of a D-Bus activatable entry answers.
struct ApplicationAddress {
  std::string name;
  std::string objectPath;
};
[[nodiscard]] ApplicationAddress applicationAddress(std::string_view id);

}  // namespace tallyvane
