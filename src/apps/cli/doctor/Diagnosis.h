// What works here and what does not, with a way to mend it.
#pragma once

#include <string>
#include <vector>

#include "cli/doctor/Surroundings.h"
#include "platform/Platform.h"

namespace tallyvane::cli {

enum class Health {
  works,
  off,      ///< the user has not asked for it
  lacking,  ///< it would be of use and is not there
  broken    ///< the user counts on it and it does not work
};

struct Diagnosis {
  std::string subject;  ///< in English; shown in the user's language
  Health health;
  std::string finding;
  std::string remedy;  ///< what to do; may be empty where it works
};

/// In the order in which a person would look: the bills, the session, what shows them, what reminds of them, texts.
[[nodiscard]] std::vector<Diagnosis> diagnose(const Platform& platform, const Surroundings& around);

}  // namespace tallyvane::cli
