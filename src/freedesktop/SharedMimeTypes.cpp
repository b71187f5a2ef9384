#include "freedesktop/SharedMimeTypes.h"

#include <charconv>

#include "foundation/Ascii.h"
#include "freedesktop/TextParts.h"

namespace tallyvane {

SharedMimeTypes::SharedMimeTypes(const XdgFolders& folders, FileStore& files) : files_(files) {
  globFiles_.push_back(folders.dataHome + "/mime/globs2");
  for (const std::string& folder : folders.dataDirs) globFiles_.push_back(folder + "/mime/globs2");
}

std::optional<std::string> SharedMimeTypes::typeForExtension(std::string_view extension) {
  if (!wasRead_) {
    for (std::size_t folder = 0; folder < globFiles_.size(); ++folder) readGlobs(folder);
    wasRead_ = true;
  }
  const auto found = types_.find(lowerAscii(extension));
  return found == types_.end() ? std::nullopt : std::optional(found->second.type);
}

void SharedMimeTypes::readGlobs(std::size_t folder) {
  const Result<std::string> content = files_.read(globFiles_[folder]);
  std::string_view rest = content ? std::string_view(*content) : std::string_view();
  while (!rest.empty()) note(takeUpTo(rest, '\n'), folder);
}

/// A line is "WEIGHT:TYPE:PATTERN" with flags behind a further colon; only patterns that are a plain extension count.
void SharedMimeTypes::note(std::string_view line, std::size_t folder) {
  if (line.starts_with('#')) return;
  const std::string_view weightText = takeUpTo(line, ':');
  const std::string_view type = takeUpTo(line, ':');
  std::string_view pattern = takeUpTo(line, ':');
  int weight = 0;
  const auto [end, error] = std::from_chars(weightText.data(), weightText.data() + weightText.size(), weight);
  const bool isForOneCase = line.find("cs") != std::string_view::npos;  // the flag of "*.C", which is not "*.c"
  if (error != std::errc() || isForOneCase || type.empty() || !pattern.starts_with("*.")) return;
  pattern.remove_prefix(2);
  if (pattern.empty() || pattern.find_first_of("*?[") != std::string_view::npos) return;
  const auto [known, isNew] = types_.try_emplace(lowerAscii(pattern), Known{std::string(type), weight, folder});
  const bool isBetter = !isNew && known->second.folder == folder && weight > known->second.weight;
  if (isBetter) known->second = Known{std::string(type), weight, folder};
}

}  // namespace tallyvane
