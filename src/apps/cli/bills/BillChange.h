// What the commands that change a bill have in common.
#pragma once

#include <string>
#include <vector>

#include "cli/Session.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

/// Makes reminders and cloud mirror agree with the files again after a change of this bill was put back. `names` are
/// all under which reminders of it may stand.
void agreeWithFiles(const Platform& platform, const std::string& bid, const std::vector<std::string>& names);

/// The same for the list of tags.
void agreeTagsWithFiles(const Platform& platform);

/// Tells the cloud store of the lists of the index.
void mirrorLists(const Platform& platform);

/// After an operation that was put back: takes out of the mirror what it had brought there and no file has, and brings
/// the lists of bills and the tags there up to date. `earlierKeys` are the mirror's from before.
void withdrawFromMirror(const Platform& platform, const std::vector<std::string>& earlierKeys);

/// Removes what would remind of a bill that is not active.
void removeReminders(const Platform& platform, const std::string& bid, const std::string& name);

/// Says what was done with which bill, in a sentence with its name and without its end; as JSON, prints the bill as it
/// is now.
void sayDone(Session& session, fmt::format_string<const std::string&> done, const std::string& bid);

}  // namespace tallyvane::cli
