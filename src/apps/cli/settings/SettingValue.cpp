#include "cli/settings/SettingValue.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "cli/Failure.h"
#include "cli/input/Similar.h"
#include "cli/input/TextInput.h"
#include "common/Sentences.h"
#include "foundation/Calendar.h"
#include "foundation/NumberReading.h"
#include "foundation/Paths.h"
#include "storage/DataFolder.h"

namespace tallyvane::cli {

namespace {

[[noreturn]] void failKind(const Setting& setting, const std::string& text) {
  switch (setting.kind) {
    case SettingKind::yesNo:
      wrongUsage(sentence("{} must be yes or no, not \"{}\".", setting.key, text));
    case SettingKind::path:
      wrongUsage(sentence("{} must be an absolute path, or empty, not \"{}\".", setting.key, text));
    case SettingKind::folder:
      wrongUsage(sentence("{} must be the absolute path of a folder, not \"{}\".", setting.key, text));
    case SettingKind::address:
      wrongUsage(
          sentence("{} must be an e-mail address such as me@example.org, or empty, not \"{}\".", setting.key, text));
    default:
      wrongUsage(sentence("{} must be a time such as 09:30, not \"{}\".", setting.key, text));
  }
}

Value yesNoInput(const Setting& setting, const std::string& text) {
  const std::string word = folded(text);
  for (const char* yes : {"yes", "true", "on", "1"}) {
    if (word == yes) return true;
  }
  for (const char* no : {"no", "false", "off", "0"}) {
    if (word == no) return false;
  }
  failKind(setting, text);
}

Value pathInput(const Setting& setting, const std::string& text) {
  if (!text.empty() && text.front() != '/') failKind(setting, text);
  return lineInput(text);
}

/// The folder that holds the data folder; naming the data folder itself means the same.
Value folderInput(const Platform& platform, const Setting& setting, const std::string& text) {
  std::string path = withoutTrailingSlashes(lineInput(text));
  if (path.ends_with("/" + std::string(dataFolderName))) path = withoutTrailingSlashes(parentOf(path));
  if (path.empty() || path.front() != '/') failKind(setting, text);
  if (!platform.files.isFolder(path)) couldNot(sentence("There is no folder {}.", path));
  return platform.bookmarks.bookmark(path);
}

/// Only what no address can be is refused: the service knows better what is one.
Value addressInput(const Setting& setting, const std::string& text) {
  const std::size_t at = text.find('@');
  const bool isOne = at != std::string::npos && at > 0 && at + 1 < text.size() && text.find('@', at + 1) == text.npos &&
                     text.find_first_of(" ,;<>\t") == std::string::npos;
  if (!text.empty() && !isOne) failKind(setting, text);
  return lineInput(text);
}

Value listInput(const std::string& text) {
  Array list;
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t comma = std::min(text.find(',', from), text.size());
    list.emplace_back(nameInput(std::string_view(text).substr(from, comma - from),
                                translated("Each text of the list must not be empty.")));
    from = comma + 1;
  }
  return list;
}

/// The two digits at a place, or -1.
int twoDigits(std::string_view text) {
  int number = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

Value timeInput(const Platform& platform, const Setting& setting, const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || colon > 2 || text.size() != colon + 3) failKind(setting, text);
  const int hour = twoDigits(std::string_view(text).substr(0, colon));
  const int minute = twoDigits(std::string_view(text).substr(colon + 1));
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59) failKind(setting, text);
  // Any day will do; on this one no clock was changed.
  return Calendar::of(platform.region).wallTime(CivilDay{std::chrono::year{2001} / 1 / 1}, hour, minute);
}

std::string timeText(const Platform& platform, const Value* value) {
  const Date* date = value == nullptr ? nullptr : value->get<Date>();
  if (date == nullptr) return "";
  const DateFields fields = Calendar::of(platform.region).fields(*date);
  return fmt::format("{:02}:{:02}", fields.hour, fields.minute);
}

std::string folderText(const Platform& platform, const Value* value) {
  const Data* bookmark = value == nullptr ? nullptr : value->get<Data>();
  return bookmark == nullptr ? std::string() : platform.bookmarks.resolve(*bookmark).value_or(std::string());
}

std::string listText(const Value* value) {
  std::string text;
  for (const std::string& element : stringsOf(value == nullptr ? nullptr : value->get<Array>())) {
    text += (text.empty() ? "" : ", ") + element;
  }
  return text;
}

const Value* pointer(const std::optional<Value>& value) { return value ? &*value : nullptr; }

}  // namespace

std::string kindText(const Setting& setting) {
  switch (setting.kind) {
    case SettingKind::yesNo:
      return "yes or no";
    case SettingKind::number:
      return fmt::format("a whole number from {} to {}", setting.least, setting.most);
    case SettingKind::path:
      return "an absolute path, or empty";
    case SettingKind::folder:
      return "the absolute path of a folder";
    case SettingKind::address:
      return "an e-mail address such as me@example.org, or empty";
    case SettingKind::list:
      return "texts with commas between them";
    case SettingKind::time:
      break;
  }
  return "a time such as 09:30";
}

Value settingInput(const Platform& platform, const Setting& setting, const std::string& text) {
  switch (setting.kind) {
    case SettingKind::yesNo:
      return yesNoInput(setting, text);
    case SettingKind::number:
      return countInput(setting.key, text, setting.least, setting.most);
    case SettingKind::path:
      return pathInput(setting, text);
    case SettingKind::folder:
      return folderInput(platform, setting, text);
    case SettingKind::address:
      return addressInput(setting, text);
    case SettingKind::list:
      return listInput(text);
    case SettingKind::time:
      break;
  }
  return timeInput(platform, setting, text);
}

std::string settingText(const Platform& platform, const Setting& setting, const std::optional<Value>& value) {
  const Value* present = pointer(value);
  switch (setting.kind) {
    case SettingKind::yesNo:
      return boolValue(present) ? "yes" : "no";
    case SettingKind::number:
      return std::to_string(integerValue(present));
    case SettingKind::path:
    case SettingKind::address:
      return present != nullptr && present->is<std::string>() ? *present->get<std::string>() : std::string();
    case SettingKind::folder:
      return folderText(platform, present);
    case SettingKind::list:
      return listText(present);
    case SettingKind::time:
      break;
  }
  return timeText(platform, present);
}

nlohmann::ordered_json settingJson(const Platform& platform, const Setting& setting,
                                   const std::optional<Value>& value) {
  const Value* present = pointer(value);
  switch (setting.kind) {
    case SettingKind::yesNo:
      return boolValue(present);
    case SettingKind::number:
      return integerValue(present);
    case SettingKind::list:
      return stringsOf(present == nullptr ? nullptr : present->get<Array>());
    default:
      return settingText(platform, setting, value);
  }
}

}  // namespace tallyvane::cli
