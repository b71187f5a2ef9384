#pragma once

#include <chrono>

#include "freedesktop/SessionBus.h"
#include "freedesktop/XdgFolders.h"
#include "platform/Log.h"

namespace tallyvane::helper {

/// The whole of the login helper: sees that the main application runs and returns. What kept it from that goes to the
/// log. Every wait has `limit` as its end; a bus that takes the connection and then says nothing ends the process with
/// exit status 0, since its library cannot be told to stop waiting.
void runLoginHelper(const Environment& environment, Log& log, std::chrono::milliseconds limit = sessionBusReplyLimit);

}  // namespace tallyvane::helper
