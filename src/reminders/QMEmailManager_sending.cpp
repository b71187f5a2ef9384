// Section 4 of QMEmailManager: sending.
#include <algorithm>
#include <string_view>

#include "net/QMFormDataRequest.h"
#include "reminders/QMEmailManager.h"
#include "storage/Keys.h"
#include "storage/Settings.h"

namespace tallyvane {

namespace {

constexpr int firstErrorStatus = 400;
constexpr int httpsPort = 443;

/// Of a text that the service may have written at length.
std::string beginningOf(const std::string& text) {
  constexpr std::size_t most = 300;
  return text.size() <= most ? text : text.substr(0, most) + " …";
}

/// A service may quote the key in its answer, which goes to logs and to the screen.
std::string withoutSecret(std::string text, const std::string& secret) {
  constexpr std::string_view mask = "(API key)";
  if (secret.empty()) return text;
  for (std::size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at + mask.size()))
    text.replace(at, secret.size(), mask);
  return text;
}

MailOutcome outcomeOf(const QMHTTPRequest& request, const std::string& title, const std::string& secret) {
  MailOutcome outcome{.billTitle = title, .failure = {}, .status = 0, .answerText = {}};
  if (const auto& error = request.error()) {
    outcome.failure = withoutSecret(error->description + (error->reason.empty() ? "" : ": " + error->reason), secret);
  } else {
    outcome.status = request.responseStatusCode();
    outcome.answerText = beginningOf(withoutSecret(request.responseData(), secret));
  }
  return outcome;
}

void noteErrors(Log& log, const MailOutcome& outcome) {
  if (!outcome.failure.empty()) {
    log.diagnostic("The mail for " + outcome.billTitle + " was not sent: " + outcome.failure);
  } else if (outcome.status >= firstErrorStatus) {
    log.diagnostic("The mail service answered " + std::to_string(outcome.status) + " to the mail for " +
                   outcome.billTitle + ": " + outcome.answerText);
  }
}

}  // namespace

void QMEmailManager::sendTestMessage() {
  subject = "Tallyvane Test Message";
  emailBody = bodyFrom("sample.html");
  timeOffset = "0";
  dueDate = platform_->clock.now();
  alarmDate = dueDate;
  billTitle = testMessageTitle;
  platform_->log.line("Sending Message: " + subject);
  sendMessageAsynchronous(true);
}

void QMEmailManager::sendMessageAsynchronous(bool asynchronous) {
  if (const auto reason = hindrance()) {
    platform_->log.diagnostic("No mail is sent: " + *reason);
    return;
  }
  const MailService& service = platform_->mail.service();
  const auto request = QMFormDataRequest::requestWithURL(*platform_, serviceAddress());
  request->addPostValueForKey(service.userName, "username");
  request->addPostValueForKey(service.apiKey, "api_key");
  request->addPostValueForKey(service.sender, "from");
  request->addPostValueForKey(recipient(), "to");
  request->addPostValueForKey(subject, "subject");
  request->addPostValueForKey(emailBody, "body_html");
  request->addPostValueForKey(timeOffset, "time_offset_minutes");
  // The message goes along as it is now: this manager may be gone, or be at another message, when the answer comes.
  const auto message = std::make_shared<QMEmailManager>(*this);
  const auto tell = [message, told = request.get(), secret = service.apiKey] {
    const MailOutcome outcome = outcomeOf(*told, message->billTitle, secret);
    std::vector<std::string>& onTheirWay = *message->onTheirWay_;
    onTheirWay.erase(std::find(onTheirWay.begin(), onTheirWay.end(), message->billTitle));
    message->observer ? message->observer(outcome) : noteErrors(message->platform_->log, outcome);
  };
  request->setCompletionBlock([message, tell] {
    message->platform_->log.line("Sent Message");
    tell();
  });
  request->setFailedBlock([message, tell] {
    message->platform_->log.line("Send Error");
    message->saveMessage();
    tell();
  });
  onTheirWay_->push_back(billTitle);
  asynchronous ? request->startAsynchronous() : request->startSynchronous();
}

void QMEmailManager::sendOrSaveMessageWithDictionaryAsynchronous(const Dictionary& message, bool asynchronous) {
  const auto date = [&](std::string_view name) {
    const Date* found = message.get<Date>(name);
    return found == nullptr ? std::nullopt : std::optional(*found);
  };
  subject = message.valueOr(key::mailSubject, std::string());
  emailBody = message.valueOr(key::mailBody, std::string());
  dueDate = date(key::mailDueDate);
  alarmDate = date(key::mailAlarmDate);
  billTitle = message.valueOr(key::mailBillTitle, std::string());
  const std::int32_t offset = getTimeOffset(alarmDate);
  timeOffset = std::to_string(offset);
  if (offset > mostMinutesAhead) {
    platform_->log.line("Saving Message From Queue...");
    saveMessage();
  } else {
    platform_->log.line("Sending Message From Queue...");
    sendMessageAsynchronous(asynchronous);
  }
}

void QMEmailManager::checkForMessagesToSendAsynchronous(bool asynchronous) {
  if (const auto reason = hindrance()) {
    platform_->log.diagnostic("The mail queue waits: " + *reason);
    return;
  }
  for (const std::string& title : getPendingMessages()) {
    if (const auto message = dictionaryForBill(title)) {
      sendOrSaveMessageWithDictionaryAsynchronous(*message, asynchronous);
    } else {
      platform_->log.diagnostic("The mail queue names " + title + " but holds no message for it");
    }
  }
  updateIndexWithNewPendingMessagesItem({});
  platform_->log.line("Index of pending messages cleared");
}

std::optional<std::string> QMEmailManager::hindrance() const {
  if (platform_->mail.service().apiKey.empty()) return "no API key of a mail service is set up";
  if (recipient().empty()) return "no address to send to is set (LEMAddress)";
  return std::nullopt;
}

std::string QMEmailManager::serviceAddress() const {
  const MailService& service = platform_->mail.service();
  const std::string port = service.port == httpsPort ? std::string() : ":" + std::to_string(service.port);
  return "https://" + service.host + port + "/mailer/send";
}

std::string QMEmailManager::recipient() const {
  return settingOf<std::string>(platform_->defaults, key::LEMAddress).value_or(std::string());
}

}  // namespace tallyvane
