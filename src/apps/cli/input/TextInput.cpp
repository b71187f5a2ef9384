#include "cli/input/TextInput.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "cli/Failure.h"
#include "cli/terminal/DisplayText.h"
#include "common/Sentences.h"
#include "foundation/Ascii.h"

namespace tallyvane::cli {

std::string lineInput(std::string_view text) {
  if (printable(text) != text) {
    wrongUsage(sentence("\"{}\" has a line break or another control character in it.", text));
  }
  return std::string(text);
}

std::string nameInput(std::string_view text, const std::string& ifEmpty) {
  std::string name = lineInput(trimmed(text));
  if (name.empty()) wrongUsage(ifEmpty);
  return name;
}

std::string notesInput(std::string_view text) {
  std::string withoutTabs(text);
  std::replace(withoutTabs.begin(), withoutTabs.end(), '\t', ' ');
  if (printableLines(withoutTabs) != withoutTabs) wrongUsage(translated("The notes have a control character in them."));
  return std::string(text);
}

std::vector<std::string> tagsInput(const std::vector<std::string>& texts) {
  if (texts.size() == 1 && texts.front().empty()) return {};
  std::vector<std::string> tags;
  for (const std::string& text : texts) {
    std::string tag = nameInput(text, translated("A tag must not be empty."));
    if (std::find(tags.begin(), tags.end(), tag) == tags.end()) tags.push_back(std::move(tag));
  }
  return tags;
}

std::string absolutePath(const std::string& text) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(text, error);
  return text.empty() || error ? std::string() : path.lexically_normal().string();
}

std::int64_t countInput(std::string_view what, std::string_view text, std::int64_t least, std::int64_t most) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc() && stopped == end && number >= least && number <= most) return number;
  // translators: what must be a number is an option or a setting, such as --count
  wrongUsage(sentence("{} must be a whole number from {} to {}, not \"{}\".", what, least, most, text));
}

}  // namespace tallyvane::cli
