// survey_road/preferences.h: what the user always wants.
#pragma once

#include <optional>

#include "points.h"

namespace survey_road {

struct Preferences
{
    std::optional<int> precision;
    char delimiter = 0; // 0: what each list's first line shows
    Text language;
};

// From survey_road.ini in the user's folder, section Preferences. What cannot be understood is told
// on the error stream and left out; a missing file is no error.
Preferences read_preferences();

} // namespace survey_road
