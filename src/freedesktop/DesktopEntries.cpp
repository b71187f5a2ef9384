#include "freedesktop/DesktopEntries.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "freedesktop/KeyFile.h"

namespace tallyvane {

namespace {

constexpr std::string_view entryEnding = ".desktop";
/// Folders of entries are a level or two deep; a loop of links must not be followed for ever.
constexpr int deepestEntryFolder = 4;

/// Where applications are said to open types, by precedence. `applications` tells the folders that hold entries too.
struct AssociationFolder {
  std::string path;
  bool applications = false;
};

std::vector<AssociationFolder> associationFolders(const SessionEnvironment& environment) {
  std::vector<AssociationFolder> folders;
  for (const std::string& folder : environment.configFolders) folders.push_back({folder, false});
  for (const std::string& folder : environment.dataFolders) folders.push_back({folder + "/applications", true});
  return folders;
}

/// The mimeapps.list files of a folder that are there: those of the running desktop first.
std::vector<KeyFile> associationFiles(FileStore& files, const SessionEnvironment& environment,
                                      const std::string& folder) {
  std::vector<KeyFile> found;
  const auto add = [&](const std::string& name) {
    if (const auto text = files.read(folder + "/" + name)) found.emplace_back(*text);
  };
  for (const std::string& desktop : environment.desktops) add(desktop + "-mimeapps.list");
  add("mimeapps.list");
  return found;
}

std::vector<std::string> associated(const KeyFile& file, std::string_view group, const std::string& type) {
  return listItems(file.group(group).value(type));
}

bool contains(const std::vector<std::string>& items, const std::string& item) {
  return std::find(items.begin(), items.end(), item) != items.end();
}

void appendUnless(const std::vector<std::string>& removed, std::vector<std::string> ids,
                  std::vector<std::string>& candidates) {
  std::erase_if(ids, [&](const std::string& id) { return contains(removed, id); });
  candidates.insert(candidates.end(), ids.begin(), ids.end());
}

/// Files of entries below a folder as paths relative to it.
void listEntryFiles(FileStore& files, const std::string& root, const std::string& below, int depth,
                    std::vector<std::string>& found) {
  const auto names = files.list(root + below);
  if (!names) return;
  for (const std::string& name : *names) {
    const std::string path = below + "/" + name;
    if (name.ends_with(entryEnding)) {
      found.push_back(path.substr(1));
    } else if (depth < deepestEntryFolder && files.isFolder(root + path)) {
      listEntryFiles(files, root, path, depth + 1, found);
    }
  }
}

}  // namespace

std::optional<DesktopEntry> DesktopEntries::handlerOfScheme(const std::string& scheme) const {
  const std::string type = "x-scheme-handler/" + scheme;
  std::vector<std::string> defaults;
  std::vector<std::string> others;
  std::vector<std::string> removed;
  for (const AssociationFolder& folder : associationFolders(environment_)) {
    for (const KeyFile& file : associationFiles(files_, environment_, folder.path)) {
      appendUnless({}, associated(file, "Default Applications", type), defaults);
      appendUnless(removed, associated(file, "Added Associations", type), others);
      appendUnless({}, associated(file, "Removed Associations", type), removed);
    }
    if (folder.applications) appendUnless(removed, claimants(folder.path, type), others);
  }
  auto chosen = firstInstalled(defaults);
  return chosen ? chosen : firstInstalled(others);
}

/// Identifiers of the folder's entries that claim a type: from the folder's cache, or without one from the entries.
std::vector<std::string> DesktopEntries::claimants(const std::string& folder, const std::string& type) const {
  if (const auto cache = files_.read(folder + "/mimeinfo.cache"))
    return associated(KeyFile(*cache), "MIME Cache", type);
  std::vector<std::string> paths;
  listEntryFiles(files_, folder, "", 0, paths);
  std::vector<std::string> ids;
  for (std::string& path : paths) {
    const auto text = files_.read(folder + "/" + path);
    const auto parsed = text ? parseDesktopEntry(*text) : std::nullopt;
    if (!parsed || !contains(parsed->mimeTypes, type)) continue;
    std::replace(path.begin(), path.end(), '/', '-');
    ids.push_back(std::move(path));
  }
  return ids;
}

std::optional<DesktopEntry> DesktopEntries::firstInstalled(const std::vector<std::string>& ids) const {
  for (const std::string& id : ids) {
    if (auto found = entry(id)) return found;
  }
  return std::nullopt;
}

/// The first folder that has the entry decides: a hidden one there is the user's way to be rid of one further on.
std::optional<DesktopEntry> DesktopEntries::entry(const std::string& id) const {
  if (!id.ends_with(entryEnding) || id.find('/') != std::string::npos) return std::nullopt;
  for (const std::string& folder : environment_.dataFolders) {
    auto found = entryIn(folder + "/applications", id);
    if (!found) continue;
    const bool missing = !found->tryExec.empty() && !programPath(environment_, found->tryExec);
    return found->hidden || missing ? std::nullopt : std::move(found);
  }
  return std::nullopt;
}

/// A dash of an identifier can stand for a folder: "kde-viewer.desktop" may be the file kde/viewer.desktop.
std::optional<DesktopEntry> DesktopEntries::entryIn(const std::string& folder, const std::string& id) const {
  std::string path = folder + "/" + id;
  for (std::size_t dash = folder.size(); dash != std::string::npos; dash = path.find('-', dash + 1)) {
    if (dash > folder.size()) {
      if (!files_.isFolder(path.substr(0, dash))) continue;
      path[dash] = '/';
    }
    const auto text = files_.read(path);
    auto parsed = text ? parseDesktopEntry(*text) : std::nullopt;
    if (!parsed) continue;
    parsed->id = id;
    parsed->path = path;
    return parsed;
  }
  return std::nullopt;
}

}  // namespace tallyvane
