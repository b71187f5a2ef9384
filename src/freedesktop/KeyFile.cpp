#include "freedesktop/KeyFile.h"

#include "foundation/Ascii.h"
#include "freedesktop/TextParts.h"

namespace tallyvane {

namespace {

std::string meaningOf(char escaped) {
  switch (escaped) {
    case 's':
      return " ";
    case 'n':
      return "\n";
    case 't':
      return "\t";
    case 'r':
      return "\r";
    case '\\':
      return "\\";
    default:
      return {'\\', escaped};
  }
}

}  // namespace

std::string_view KeyFileGroup::value(std::string_view key) const {
  for (const auto& [entryKey, entryValue] : entries) {
    if (entryKey == key) return entryValue;
  }
  return {};
}

KeyFile::KeyFile(std::string_view text) {
  KeyFileGroup* current = nullptr;
  while (!text.empty()) {
    const std::string_view line = trimmed(takeUpTo(text, '\n'));
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[' && line.back() == ']') {
      current = &groupNamed(line.substr(1, line.size() - 2));
      continue;
    }
    const std::size_t equals = line.find('=');
    if (current == nullptr || equals == std::string_view::npos) continue;
    current->entries.emplace_back(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
}

KeyFileGroup& KeyFile::groupNamed(std::string_view name) {
  for (KeyFileGroup& group : groups_) {
    if (group.name == name) return group;
  }
  return groups_.emplace_back(KeyFileGroup{std::string(name), {}});
}

const KeyFileGroup& KeyFile::group(std::string_view name) const {
  static const KeyFileGroup none;
  for (const KeyFileGroup& group : groups_) {
    if (group.name == name) return group;
  }
  return none;
}

std::string unescapedText(std::string_view raw) {
  std::string text;
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\\' && i + 1 < raw.size()) {
      text += meaningOf(raw[++i]);
    } else {
      text += raw[i];
    }
  }
  return text;
}

std::vector<std::string> listItems(std::string_view raw) {
  std::vector<std::string> items;
  std::string item;
  const auto finish = [&] {
    if (!item.empty()) items.push_back(unescapedText(item));
    item.clear();
  };
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == ';') {
      finish();
    } else if (raw[i] == '\\' && i + 1 < raw.size()) {
      ++i;
      if (raw[i] != ';') item += '\\';
      item += raw[i];
    } else {
      item += raw[i];
    }
  }
  finish();
  return items;
}

}  // namespace tallyvane
