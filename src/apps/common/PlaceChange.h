// Changing where the data folder lies. What was begun is noted in the settings until it is done, so that after an
// interruption at any moment the next program knows which folder is whole, and can bring the change to its end.
#pragma once

#include <optional>
#include <string>

#include "foundation/Result.h"
#include "platform/Platform.h"

namespace tallyvane::programs {

/// Where the data folder is to lie.
struct Place {
  std::optional<std::string> folder;  ///< the user's own; without one it is the usual place
  bool dropbox = false;               ///< that folder is a Dropbox
};

/// The data folder's path there.
[[nodiscard]] std::string dataFolderAt(const Platform& platform, const Place& place);
/// Where it is by the settings; a bookmark that leads nowhere counts as none.
[[nodiscard]] Place currentPlace(const Platform& platform);

/// What becomes of the data folder of now: it moves to the new place, is copied there, or stays where it is, and the
/// one that is found there is used from now on.
enum class Carrying { move, copy, adopt };

struct PlaceChange {
  std::string from;  ///< both are paths of data folders
  std::string to;
  Place place;
  Carrying carrying = Carrying::move;
};

/// Carries the data folder over, switches the settings and has receipts follow. The new place holds nothing but, at
/// most, an empty folder, unless its data folder is adopted; the two neither are the same nor lie in one another. On an
/// error the old folder is in use as before, or the change can be finished. Under the programs' lock.
Result<> changePlace(const Platform& platform, const Place& place, Carrying carrying);

/// The change that was begun and has not ended.
[[nodiscard]] std::optional<PlaceChange> begunPlaceChange(const Platform& platform);
/// Which of its two folders is whole; "" when neither is there.
[[nodiscard]] std::string wholeFolderOf(const Platform& platform, const PlaceChange& change);
/// Brings it to its end, or, when nothing has arrived at the new place, calls it off. Under the programs' lock.
Result<> finishPlaceChange(const Platform& platform, const PlaceChange& change);

}  // namespace tallyvane::programs
