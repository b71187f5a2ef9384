// Taking doubles off the lists of the index, and entering the bills that are in none.
#pragma once

#include <string>
#include <vector>

#include "cli/Session.h"
#include "cli/bills/Groups.h"
#include "cli/check/DataFolderCheck.h"

namespace tallyvane::cli {

/// A bill in no list, and the list that the person wants it in.
struct Choice {
  std::string bid;
  std::string name;
  Group list;
};

struct Repair {
  std::string copy;  ///< the data folder as it was; "" when there was nothing to repair
  std::size_t doubles = 0;
  std::vector<Choice> listed;
};

/// Takes the doubles off the lists and asks for each bill in no list where it belongs; of those that nobody answers
/// for, nothing changes. The data folder is copied beside the backups first. Fails when that or the writing does, all
/// as before then.
[[nodiscard]] Repair repair(Session& session, const std::string& folder, const CheckReport& report);

}  // namespace tallyvane::cli
