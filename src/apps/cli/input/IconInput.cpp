#include "cli/input/IconInput.h"

#include <fmt/ranges.h>

#include <functional>
#include <vector>

#include "cli/input/InputText.h"
#include "cli/input/Similar.h"
#include "common/Sentences.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::cli {

namespace {

using Matches = std::function<bool(const std::string& name)>;

std::vector<CatalogueIcon> iconsWhere(const Region& region, const Matches& matches) {
  std::vector<CatalogueIcon> found;
  for (const CatalogueIcon& icon : iconCatalogue())
    if (matches(folded(icon.title)) || matches(folded(region.localized(icon.title)))) found.push_back(icon);
  return found;
}

Error ambiguous(const Region& region, std::string_view text, const std::vector<CatalogueIcon>& candidates) {
  std::vector<std::string> titles;
  titles.reserve(candidates.size());
  for (const CatalogueIcon& icon : candidates) titles.push_back(region.localized(icon.title));
  return {sentence("\"{}\" could be several icons: {}.", text, fmt::join(titles, "; "))};
}

Result<std::string> iconNumbered(int number) {
  const auto& catalogue = iconCatalogue();
  const auto index = static_cast<std::size_t>(number);
  if (index >= catalogue.size()) return Error{sentence("Icons are numbered 0 to {}.", catalogue.size() - 1)};
  return std::string(catalogue[index].imageName);
}

}  // namespace

Result<std::string> readIcon(const Region& region, std::string_view text) {
  const std::string wanted = plainText(text);
  if (const auto number = wholeNumber(wanted)) return iconNumbered(*number);
  for (const CatalogueIcon& icon : iconCatalogue())
    if (folded(icon.imageName) == wanted) return std::string(icon.imageName);
  const Matches attempts[] = {
      [&](const std::string& name) { return name == wanted; },
      [&](const std::string& name) { return name.starts_with(wanted); },
      [&](const std::string& name) { return name.find(wanted) != std::string::npos; },
  };
  for (const Matches& matches : attempts) {
    const auto found = wanted.empty() ? std::vector<CatalogueIcon>() : iconsWhere(region, matches);
    if (found.size() > 1) return ambiguous(region, text, found);
    if (found.size() == 1) return std::string(found.front().imageName);
  }
  return Error{sentence("There is no icon \"{}\"; \"tallyvane icons\" lists them.", text)};
}

}  // namespace tallyvane::cli
