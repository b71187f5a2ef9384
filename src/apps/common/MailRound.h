// What a program does about reminders by mail before it has the queue checked. Under the programs' lock, and as one
// operation of the guarded files: when that fails, nothing may be sent, for the queue could not be cleared afterwards.
#pragma once

#include <optional>
#include <string>

#include "platform/Platform.h"

namespace tallyvane::programs {

/// Queues a message for each active bill that wants reminders and whose alarm lies within the 15 days before or after
/// now, once per due date. Not earlier, because a check of the queue drops what is farther away. Of bills that share a
/// name only the first has one: messages are kept by name.
void queueDueMessages(const Platform& platform);

/// Takes off the pending list what has been settled since it was queued: messages whose bill was paid on, archived or
/// deleted. A test message stays.
void dropSettledMessages(const Platform& platform);

/// Both, and then the queue is written once more as it is, so that a disk that takes nothing shows now.
void prepareMailQueue(const Platform& platform);

/// Whether the user has switched reminders by mail on.
[[nodiscard]] bool wantsMail(const Platform& platform);

/// Why no mail goes out, as a clause: reminders by mail are switched off, or something is missing.
[[nodiscard]] std::optional<std::string> mailHindrance(const Platform& platform);

}  // namespace tallyvane::programs
