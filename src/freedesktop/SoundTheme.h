#pragma once

#include <string>

#include "freedesktop/SessionEnvironment.h"

namespace tallyvane {

/// Plays the sound of that name of the desktop's sound theme and returns at once. Where no player of such themes is
/// installed, or the theme lacks the sound, nothing is heard.
void playThemeSound(const SessionEnvironment& environment, const std::string& name);

}  // namespace tallyvane
