#include "cli/bills/Receipt.h"

#include "storage/DataFolder.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

Receipt receiptOf(const Platform& platform, const Dictionary& payment) {
  const std::string stored = payment.valueOr(key::Receipt, std::string());
  if (stored.empty() || platform.files.exists(stored)) return {stored};
  const std::string moved = pathInDataFolder(platform, stored.substr(stored.rfind('/') + 1));
  if (!moved.empty() && platform.files.exists(moved)) return {moved};
  return {stored, true};
}

}  // namespace tallyvane::cli
