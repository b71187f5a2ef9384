#include "freedesktop/DesktopEntry.h"

#include <algorithm>

#include "foundation/FileUrl.h"
#include "freedesktop/KeyFile.h"

namespace tallyvane {

namespace {

/// One word of a command line; a quoted one holds no field codes.
struct Word {
  std::string text;
  bool quoted = false;
};

/// Reads from just after an opening quote to just after the closing one; false when there is none.
bool readQuoted(std::string_view line, std::size_t& at, std::string& text) {
  constexpr std::string_view escapable = "\"`$\\";
  for (; at < line.size() && line[at] != '"'; ++at) {
    if (line[at] == '\\' && at + 1 < line.size() && escapable.find(line[at + 1]) != std::string_view::npos) ++at;
    text += line[at];
  }
  return at++ < line.size();
}

Result<std::vector<Word>> wordsOf(std::string_view line) {
  std::vector<Word> words;
  for (std::size_t at = 0; at < line.size();) {
    if (line[at] == ' ' || line[at] == '\t') {
      ++at;
      continue;
    }
    Word word;
    while (at < line.size() && line[at] != ' ' && line[at] != '\t') {
      if (line[at] != '"') {
        word.text += line[at++];
        continue;
      }
      word.quoted = true;
      if (!readQuoted(line, ++at, word.text)) return Error{"a quote of its command line is not closed"};
    }
    words.push_back(std::move(word));
  }
  return words;
}

/// The codes that may stand anywhere in a word; deprecated and unknown ones are nothing.
std::string codeText(char code, const DesktopEntry& entry, const std::string& url) {
  switch (code) {
    case '%':
      return "%";
    case 'u':
    case 'U':
      return url;
    case 'f':
    case 'F':
      return pathOfFileUrl(url).value_or("");
    case 'c':
      return entry.name;
    case 'k':
      return entry.path;
    default:
      return "";
  }
}

std::string withCodesReplaced(const std::string& word, const DesktopEntry& entry, const std::string& url) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%') {
      text += word[i];
    } else if (++i < word.size()) {
      text += codeText(word[i], entry, url);
    }
  }
  return text;
}

void append(std::vector<std::string>& command, const Word& word, const DesktopEntry& entry, const std::string& url) {
  if (word.quoted) {
    command.push_back(word.text);
  } else if (word.text == "%i") {
    if (!entry.icon.empty()) command.insert(command.end(), {"--icon", entry.icon});
  } else {
    std::string text = withCodesReplaced(word.text, entry, url);
    if (!text.empty()) command.push_back(std::move(text));
  }
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text) {
  const KeyFile file(text);
  const KeyFileGroup& group = file.group("Desktop Entry");
  const auto isTrue = [&](std::string_view key) { return group.value(key) == "true"; };
  if (group.value("Type") != "Application" && !isTrue("Hidden")) return std::nullopt;
  DesktopEntry entry;
  entry.name = unescapedText(group.value("Name"));
  entry.icon = unescapedText(group.value("Icon"));
  entry.exec = unescapedText(group.value("Exec"));
  entry.tryExec = unescapedText(group.value("TryExec"));
  entry.hidden = isTrue("Hidden");
  entry.terminal = isTrue("Terminal");
  entry.dbusActivatable = isTrue("DBusActivatable");
  entry.mimeTypes = listItems(group.value("MimeType"));
  return entry;
}

Result<std::vector<std::string>> commandForUrl(const DesktopEntry& entry, const std::string& url) {
  const auto words = wordsOf(entry.exec);
  if (!words) return Error{words.error()};
  std::vector<std::string> command;
  for (const Word& word : *words) append(command, word, entry, url);
  if (command.empty() || command.front().empty()) return Error{"it names no program to start"};
  return command;
}

ApplicationAddress applicationAddress(std::string_view id) {
  constexpr std::string_view ending = ".desktop";
  if (id.ends_with(ending)) id.remove_suffix(ending.size());
  ApplicationAddress address{std::string(id), "/" + std::string(id)};
  std::replace(address.objectPath.begin(), address.objectPath.end(), '.', '/');
  std::replace(address.objectPath.begin(), address.objectPath.end(), '-', '_');
  return address;
}

}  // namespace tallyvane
