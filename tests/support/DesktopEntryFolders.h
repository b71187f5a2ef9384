// Folders of desktop entries.
#pragma once

#include "freedesktop/DesktopEntries.h"

#include <gmock/gmock.h>

#include <regex>
#include <sstream>

#include "freedesktop/Terminal.h"
#include "support/InMemoryFileStore.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"
#include "support/TextTable.h"

namespace tallyvane::testing {

const std::string own = "/home/ada/.local/share/applications/";
const std::string ownList = "/home/ada/.config/mimeapps.list";
const std::string defaults = "Default Applications";

/// A list of the desktop that names applications for the scheme "bill".
struct List {
  std::string path, group, ids;
};

/// Where "own/a", an application of the user, or "usr/a", one of the system, lies.
inline std::string pathOf(const std::string& word) {
  return (word.starts_with("own/") ? own : "/usr/share/applications/") + word.substr(4) + ".desktop";
}

/// Words such as "+own/a" and "-usr/b": an application of the user or the system, and whether it claims the scheme.
/// "!" hides it, "?" claims the scheme for a program that is not installed.
inline void install(InMemoryFileStore& files, const std::string& applications) {
  const std::map<char, std::string> rest{{'+', "MimeType=x-scheme-handler/bill;\n"},
                                         {'-', ""},
                                         {'!', "Hidden=true\n"},
                                         {'?', "MimeType=x-scheme-handler/bill;\nTryExec=/no/such\n"}};
  std::istringstream words(applications);
  for (std::string word; words >> word;) {
    const std::string path = pathOf(word.substr(1));
    (void)files.createFolder(InMemoryFileStore::parent(path));
    files.content[path] = "[Desktop Entry]\nType=Application\nExec=x\n" + rest.at(word.front());
  }
}

}  // namespace tallyvane::testing
