#include "freedesktop/InstalledMailSettings.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "freedesktop/KeyFile.h"

namespace tallyvane {

namespace {

constexpr const char* fileName = "/Tallyvane/mail.conf";

std::optional<int> portOf(const std::string& text) {
  constexpr int greatest = 65535;
  int port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  const bool isPort = error == std::errc() && end == text.data() + text.size() && port > 0 && port <= greatest;
  return isPort ? std::optional(port) : std::nullopt;
}

}  // namespace

InstalledMailSettings::InstalledMailSettings(MailService built, const XdgFolders& folders, FileStore& files, Log& log)
    : service_(std::move(built)), paths_{folders.configHome + fileName}, files_(files), log_(log) {
  for (const std::string& folder : folders.configDirs) paths_.push_back(folder + fileName);
  std::reverse(paths_.begin(), paths_.end());
}

const MailService& InstalledMailSettings::service() {
  std::call_once(wasRead_, [this] {
    for (const std::string& path : paths_) read(path);
  });
  return service_;
}

void InstalledMailSettings::read(const std::string& path) {
  const Result<std::string> content = files_.read(path);
  if (!content) {
    if (files_.exists(path)) log_.diagnostic("Cannot read " + content.error());
    return;
  }
  const KeyFile file(*content);
  for (const auto& [key, raw] : file.group("Mail Service").entries) {
    const std::string value = unescapedText(raw);
    if (key == "Host") service_.host = value;
    if (key == "UserName") service_.userName = value;
    if (key == "ApiKey") service_.apiKey = value;
    if (key == "Sender") service_.sender = value;
    if (key == "Certificates") service_.certificates = value;
    if (key != "Port") continue;
    const std::optional<int> port = portOf(value);
    if (!port) log_.diagnostic(path + ": Port must be a number from 1 to 65535, not " + value);
    service_.port = port.value_or(service_.port);
  }
}

}  // namespace tallyvane
