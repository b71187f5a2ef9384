// Reminders by mail: one message at a time, and the queue of those that wait.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Date.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane {

/// What became of one message that was to be sent.
struct MailOutcome {
  std::string billTitle;
  std::string failure;     ///< why it was not sent; empty when the service answered
  int status = 0;          ///< the service's HTTP status, whatever it is; 0 without an answer
  std::string answerText;  ///< what the service says
};

/// Posts reminders to a web mail service, which holds each back until its alarm. A message whose alarm is more than 15
/// days away waits in the queue, "mailindex.plist" in the data folder; so does one whose sending failed. Cheap to copy;
/// a message on its way takes a copy along. Nothing is sent while `hindrance` says why not.
class QMEmailManager {
 public:
  explicit QMEmailManager(const Platform& platform) : platform_(&platform) {}

  // 1. The message at hand
  std::string subject;
  std::string emailBody;   ///< HTML
  std::string timeOffset;  ///< decimal minutes from now until it is to be delivered
  std::string billTitle;   ///< the bill's name, and the message's key in the queue
  std::optional<Date> dueDate;
  std::optional<Date> alarmDate;
  /// Told on the main thread about each message that this manager sends from then on, in place of the log's
  /// diagnostics.
  std::function<void(const MailOutcome&)> observer;

  // 2. Making messages (QMEmailManager.cpp)
  /// Builds a bill's reminder from the template and queues it; it is never sent at once.
  void createMessageWithTitleAndAlarmDateAndDueDate(const std::string& title, Date alarm, Date due);
  /// Minutes from now until the date, at least 1; of a number beyond 32 bits only those are kept.
  [[nodiscard]] std::int32_t getTimeOffset(std::optional<Date> date) const;
  [[nodiscard]] std::string getDateString(Date date) const;

  // 3. The queue (QMEmailManager_queue.cpp). Failures of writing are not reported.
  /// Puts the message at hand into the queue, in place of an earlier one under its title.
  void saveMessage();
  [[nodiscard]] Dictionary createDictionaryWithEmail() const;
  [[nodiscard]] std::string getMailPath() const;
  /// Nothing when the file is not there or cannot be used.
  [[nodiscard]] std::optional<Dictionary> getMailIndex() const;
  [[nodiscard]] std::vector<std::string> getPendingMessages() const;
  /// The last message that was queued under the title, also when it has left the pending list.
  [[nodiscard]] std::optional<Dictionary> dictionaryForBill(const std::string& title) const;
  /// Replaces the pending list; without a usable file it does nothing.
  void updateIndexWithNewPendingMessagesItem(const std::vector<std::string>& titles);
  /// Does nothing: a message stays in the file until another takes its place; deliberate.
  void removeMessageFromQueue(const std::string& title);

  // 4. Sending (QMEmailManager_sending.cpp). Any answer of the service counts as sent; a failure queues the message
  // again. Synchronously means that this has happened when the call returns.
  void sendTestMessage();
  void sendMessageAsynchronous(bool asynchronous);
  /// Loads the message; one whose alarm is more than 15 days away goes back into the queue.
  void sendOrSaveMessageWithDictionaryAsynchronous(const Dictionary& message, bool asynchronous);
  /// Offers every pending message, then empties the pending list. So one that went back because its alarm is far away
  /// is no longer pending; only a failure that is told later puts a title back. Deliberate, in this order.
  void checkForMessagesToSendAsynchronous(bool asynchronous);
  /// Why nothing can be sent: no account is set up, or nobody to send to.
  [[nodiscard]] std::optional<std::string> hindrance() const;
  [[nodiscard]] std::string serviceAddress() const;
  /// Titles of the messages of this manager, and of those that it was copied from, that have no outcome yet.
  [[nodiscard]] const std::vector<std::string>& messagesOnTheirWay() const { return *onTheirWay_; }

  /// The longest that the service holds a message back, in minutes: 15 days.
  static constexpr std::int32_t mostMinutesAhead = 21'600;
  static constexpr const char* testMessageTitle = "Test Message";

 private:
  /// The text of an installed file; empty, which is said, without one.
  [[nodiscard]] std::string bodyFrom(const char* resource) const;
  [[nodiscard]] std::string recipient() const;

  const Platform* platform_;  ///< not owned, never null
  std::shared_ptr<std::vector<std::string>> onTheirWay_ = std::make_shared<std::vector<std::string>>();
};

}  // namespace tallyvane
