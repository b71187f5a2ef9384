#include <string_view>

#include "payments/QMPaymentLogger.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMUIDMaker.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

constexpr std::string_view longTitle = "Attach Receipt";
constexpr std::string_view shortTitle = "Attach";

constexpr std::array<std::string_view, 4> sounds = {"trumpet", "triumph2", "harp", "applause"};
constexpr std::int64_t anySound = 4;
constexpr std::array<std::string_view, 6> randomSounds = {"bravo", "congrats", "fantastic",
                                                          "ter",   "welldone", "youdid"};

/// What follows the last point of the last component, with the point; "" when there is none or nothing follows or
/// precedes it.
std::string_view extensionOf(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t point = name.rfind('.');
  const bool isExtension = point != std::string_view::npos && point > 0 && point + 1 < name.size();
  return isExtension ? name.substr(point) : std::string_view();
}

/// The system's reason alone: where somebody keeps their papers is no matter for the log.
std::string reasonOf(const std::string& error) {
  const std::size_t path = error.rfind(": ");
  const std::string reason = path == std::string::npos ? error : error.substr(path + 2);
  return reason.find('/') == std::string::npos ? reason : "it cannot be copied from there";
}

}  // namespace

std::optional<std::string> QMPaymentLogger::getSpecifiedSound() const {
  if (!boolSetting(platform_.defaults, key::PlayInterfaceSounds)) return std::nullopt;
  const std::int64_t choice = integerSetting(platform_.defaults, key::WhichSoundEffect);
  if (choice == anySound) return randomSound();
  const auto index = static_cast<std::uint64_t>(choice);
  return index < sounds.size() ? std::optional<std::string>(sounds[index]) : std::nullopt;
}

std::string QMPaymentLogger::randomSound() const {
  // Bytes that would favour the first names are drawn again.
  constexpr unsigned fair = 256 - 256 % randomSounds.size();
  for (;;) {
    for (const std::uint8_t byte : platform_.random.bytes16()) {
      if (byte < fair) return std::string(randomSounds[byte % randomSounds.size()]);
    }
  }
}

std::string QMPaymentLogger::cleanReceiptTitle(const std::string& text) const {
  return text == longTitle || text == shortTitle ? std::string() : text;
}

// Always the short title; deliberate.
std::string QMPaymentLogger::reverseCleanReceiptTitleWithString(const std::string& text) const {
  return text.empty() ? std::string(shortTitle) : text;
}

std::string QMPaymentLogger::resetTitleForReceiptButton(std::int64_t style) const {
  if (style == 1) return platform_.region.localized(longTitle);
  return style == 2 ? platform_.region.localized(shortTitle) : std::string();
}

std::string QMPaymentLogger::copyAttachment(const std::string& path) const {
  if (cleanReceiptTitle(path).empty()) return path;
  const std::string name = QMUIDMaker{platform_.random}.makeUID() + std::string(extensionOf(path));
  const std::string copy = pathInDataFolder(platform_, name);
  const Result<> copied = platform_.files.copy(path, copy);
  if (!copied) platform_.log.line("Error: " + reasonOf(copied.error()));
  platform_.log.line("Final Path " + copy);
  return copy;
}

}  // namespace tallyvane
