// Section 2 of QMEmailManager: making messages.
#include "reminders/QMEmailManager.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "foundation/Texts.h"

namespace tallyvane {

namespace {

void replaceAll(std::string& text, std::string_view placeholder, std::string_view replacement) {
  for (std::size_t at = text.find(placeholder); at != std::string::npos;
       at = text.find(placeholder, at + replacement.size())) {
    text.replace(at, placeholder.size(), replacement);
  }
}

}  // namespace

void QMEmailManager::createMessageWithTitleAndAlarmDateAndDueDate(const std::string& title, Date alarm, Date due) {
  std::string body = bodyFrom("template.html");
  replaceAll(body, "$BillName", title);
  replaceAll(body, "$NextDueDate", getDateString(due));
  subject = "Bill Due Soon: " + title;
  emailBody = std::move(body);
  timeOffset = std::to_string(getTimeOffset(alarm));
  billTitle = title;
  dueDate = due;
  alarmDate = alarm;
  platform_->log.line("Message Created");
  saveMessage();
}

std::string QMEmailManager::bodyFrom(const char* resource) const {
  const std::optional<std::string> text = platform_->resources.text(resource);
  if (!text) platform_->log.diagnostic(std::string("A mail is made without a text, for lack of a usable ") + resource);
  return text.value_or(std::string());
}

std::int32_t QMEmailManager::getTimeOffset(std::optional<Date> date) const {
  if (!date) return 1;
  const double seconds = std::chrono::duration<double>(*date - platform_->clock.now()).count();
  if (seconds < 1.0) return 1;
  constexpr double secondsPerMinute = 60;
  const auto minutes = static_cast<std::int32_t>(static_cast<std::int64_t>(std::floor(seconds / secondsPerMinute)));
  return std::max(minutes, 1);
}

std::string QMEmailManager::getDateString(Date date) const {
  return "Due date: " + dateInPattern(platform_->region, date, "MMM d, yyyy");
}

}  // namespace tallyvane
