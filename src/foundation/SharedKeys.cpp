#include "foundation/SharedKeys.h"

#include <algorithm>
#include <array>

namespace tallyvane {

namespace {

/// What adding to a list made of it: the first `count` keys of `from`, and those that followed.
struct Extension {
  SharedKeys from;
  std::size_t count = 0;
  SharedKeys result;

  [[nodiscard]] bool leadsTo(const std::string& key) const {
    const auto keys = result.all();
    return count < keys.size() && keys[count] == key;
  }
};

/// Those made last in this thread. Dictionaries of a kind get the same keys one after the other, such as the rows of a
/// listing what is shown of each bill; they share the outcome.
struct LatestExtensions {
  static constexpr std::size_t longest = 64;  ///< keys; longer lists are rare and are not kept
  std::array<Extension, 4> all;
  std::size_t oldest = 0;

  void add(Extension extension) {
    all[oldest] = std::move(extension);
    oldest = (oldest + 1) % all.size();
  }
};

LatestExtensions& latestOfThisThread() {
  static thread_local LatestExtensions latest;
  return latest;
}

}  // namespace

void SharedKeys::put(std::size_t count, std::string key) {
  const auto known = all();
  if (count < known.size() && known[count] == key) return;
  LatestExtensions& latest = latestOfThisThread();
  Extension* mine = nullptr;  // that led here; its share does not count
  for (Extension& each : latest.all) {
    if (each.count == count && isSharedWith(each.from) && each.leadsTo(key)) {
      *this = each.result;
      return;
    }
    if (list_ != nullptr && isSharedWith(each.result) && each.count <= count) mine = &each;
  }
  if (mine != nullptr && count >= LatestExtensions::longest) *std::exchange(mine, nullptr) = Extension();
  const std::size_t owners = list_ == nullptr ? 0 : list_->owners.load(std::memory_order_acquire);
  if (owners == (mine == nullptr ? 1U : 2U)) {
    list_->keys.resize(count);
  } else {
    const SharedKeys from = *this;
    own(count);
    if (count < LatestExtensions::longest) latest.add({from, count, *this});
  }
  list_->keys.push_back(std::move(key));
}

void SharedKeys::erase(std::size_t count, std::size_t place) {
  std::vector<std::string>& keys = own(count);
  keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(place));
}

/// The first `count` keys, in a list that nobody else has.
std::vector<std::string>& SharedKeys::own(std::size_t count) {
  if (list_ != nullptr && list_->owners.load(std::memory_order_acquire) == 1) {
    list_->keys.resize(count);
    return list_->keys;
  }
  constexpr std::size_t room = 4;  // for the keys that are about to follow
  SharedKeys fresh;
  fresh.list_ = new List;
  fresh.list_->keys.reserve(count + room);
  const auto kept = all().first(count);
  fresh.list_->keys.assign(kept.begin(), kept.end());
  *this = std::move(fresh);
  return list_->keys;
}

}  // namespace tallyvane
