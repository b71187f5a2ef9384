#include "freedesktop/SoundTheme.h"

#include "freedesktop/Spawn.h"

namespace tallyvane {

void playThemeSound(const SessionEnvironment& environment, const std::string& name) {
  if (const auto player = programPath(environment, "canberra-gtk-play")) (void)spawnDetached({*player, "--id", name});
}

}  // namespace tallyvane
