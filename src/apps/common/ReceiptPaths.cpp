#include "common/ReceiptPaths.h"

#include "freedesktop/PosixPaths.h"
#include "platform/PropertyListFile.h"
#include "storage/DataFolder.h"
#include "storage/Keys.h"
#include "storage/QMBill.h"
#include "storage/QMUIDMaker.h"

namespace tallyvane::programs {

namespace {

/// Receipts are named by an identifier of their own; a file that merely has the same name is not taken for one.
bool isReceiptElsewhere(FileStore& files, const std::string& path, const std::string& folder) {
  const std::string name = nameOf(path);
  return path.starts_with('/') && parentOf(path) != folder && isUID(name.substr(0, name.find('.'))) &&
         files.exists(folder + "/" + name);
}

/// Whether a path was changed.
bool followIn(Array& payments, FileStore& files, const std::string& folder) {
  bool changed = false;
  for (Value& payment : payments) {
    auto* entry = payment.get<Dictionary>();
    const auto* receipt = entry == nullptr ? nullptr : entry->get<std::string>(key::Receipt);
    if (receipt == nullptr || !isReceiptElsewhere(files, *receipt, folder)) continue;
    entry->set(key::Receipt, folder + "/" + nameOf(*receipt));
    changed = true;
  }
  return changed;
}

/// What cannot be read now fails, for the change of place to be finished later; what is damaged names no receipts.
Result<> followInBill(const Platform& platform, const std::string& path, const std::string& folder) {
  const Result<std::string> bytes = platform.files.read(path);
  if (!bytes) return Error{bytes.error()};
  Result<Value> root = readPropertyList(*bytes);
  auto* bill = root ? root->get<Dictionary>() : nullptr;
  auto* payments = bill == nullptr ? nullptr : bill->get<Array>(key::PaymentList);
  if (payments == nullptr || !followIn(*payments, platform.files, folder)) return {};
  if (Result<> saved = savePropertyListFile(platform.files, path, *bill); !saved) return saved;
  const std::string bid = bill->valueOr(key::Bid, std::string());
  if (platform.cloud.object(bid)) QMBill{platform}.uploadBillToiCloudWithBidAndDictionary(bid, *bill);
  return {};
}

}  // namespace

Result<> haveReceiptsFollow(const Platform& platform, const std::string& folder) {
  constexpr std::string_view ending = ".plist";
  const Result<std::vector<std::string>> names = platform.files.list(folder);
  if (!names) return Error{names.error()};
  for (const std::string& name : *names) {
    if (!name.ends_with(ending)) continue;
    const std::string path = billPathIn(folder, name.substr(0, name.size() - ending.size()));
    if (path.empty()) continue;
    if (Result<> followed = followInBill(platform, path, folder); !followed) return followed;
  }
  return {};
}

}  // namespace tallyvane::programs
