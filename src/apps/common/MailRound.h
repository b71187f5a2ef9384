// What a program does about reminders by mail before it has the queue checked. Under the programs' lock, and as one
// operation of the guarded files: when that fails, nothing may be sent, for the queue could not be cleared afterwards.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// Queues a message for each active bill that wants reminders and whose alarm lies within the 15 days before or after
/// now, once per due date. Not earlier, because a check of the queue drops what is farther away. Of bills that share a
/// name only the first has one: messages are kept by name.
void queueDueMessages(const Platform& platform);

/// Takes off the pending list what has been settled since it was queued: messages whose bill was paid on, archived or
/// deleted. A test message stays.
void dropSettledMessages(const Platform& platform);

/// What is written down about a round that is under way, in a property list of the user's state: the titles of the
/// messages whose outcome is not known. A check clears the pending list while they are on their way, and a program that
/// is killed then would lose them. One round at a time among the user's programs, from before the queue is prepared
/// until every message has its outcome; who has the turn holds a lock of its own, not the programs' lock.
class MailRoundNotes {
 public:
  /// The platform outlives it. The path's folder must exist.
  MailRoundNotes(const Platform& platform, std::string path) : platform_(platform), path_(std::move(path)) {}

  /// Makes the queue ready for a check: puts back what an earlier round left without an outcome, queues what is due,
  /// drops what is settled, and notes what will be on its way. The queue is written once more as it is, so that a disk
  /// that takes nothing shows now.
  void prepareMailQueue();
  /// Notes that only these are still on their way.
  Result<> note(const std::vector<std::string>& titlesOnTheirWay);

 private:
  [[nodiscard]] std::vector<std::string> noted() const;

  const Platform& platform_;
  std::string path_;
};

/// Whether the user has switched reminders by mail on.
[[nodiscard]] bool wantsMail(const Platform& platform);

/// Why no mail goes out, as a clause: reminders by mail are switched off, the data folder is not whole just now, or
/// something is missing.
[[nodiscard]] std::optional<std::string> mailHindrance(const Platform& platform);

}  // namespace tallyvane::programs
