// Finding the bill that a person means.
#pragma once

#include <string>
#include <vector>

#include "cli/bills/Groups.h"
#include "common/Sentences.h"
#include "foundation/Value.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

/// A bill's own file, and the list in which it stands.
struct ListedBill {
  std::string bid;  ///< as the index has it
  Group group;
  Dictionary content;  ///< what the file holds: no display keys, the due date unshifted

  [[nodiscard]] std::string name() const { return content.valueOr(key::Name, std::string()); }
};

/// The data folder. Fails when it is not there, or is being replaced or moved: nothing is written then, and no one is
/// told that there are no bills.
std::string requireDataFolder(const Platform& platform);

/// Likewise, and fails when its index is there but cannot be read.
void requireReadableData(const Platform& platform);

/// Fails when the file is there but is no dictionary that can be read. The sentence is filled with the reason.
void requireReadableFile(const Platform& platform, const std::string& path,
                         fmt::format_string<const std::string&> refusal);

/// The contents of the bills of these groups, as in the files.
[[nodiscard]] std::vector<Dictionary> contentsOf(const Platform& platform, const std::vector<Group>& groups);

/// Every bill of the index whose file can be read, once, in the order active, archived, deleted. One that stands in
/// several lists counts for the first of them. Fails as above.
[[nodiscard]] std::vector<ListedBill> allBills(const Platform& platform);

/// The one bill of these groups that the text names: by its identifier, its name, or the beginning of its name; case
/// and the form of accents count only where they tell two apart. A better match in any of the groups goes before a
/// worse one, then the groups' order. No such bill, or several, fails with a sentence that says which there are.
[[nodiscard]] ListedBill findBill(const Platform& platform, const std::string& text, const std::vector<Group>& groups);

/// Fails when another bill of these groups has exactly this name: reminders are found by it.
void requireUnusedName(const Platform& platform, const std::string& name, const std::string& exceptBid,
                       const std::vector<Group>& groups);

}  // namespace tallyvane::cli
