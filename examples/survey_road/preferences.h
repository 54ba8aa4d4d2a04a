// survey_road/preferences.h: what the user always wants.
#pragma once

#include <optional>
#include <vector>

#include "points.h"

namespace survey_road {

struct Preferences
{
    std::optional<int> precision;
    char delimiter = 0; // 0: what each list's first line shows
    Text language;
    Text path;                           // of the file
    std::vector<const char*> complaints; // texts to translate: what was not understood and left out
};

// From survey_road.ini in the user's folder, section Preferences. A missing file is no error.
Preferences read_preferences();

// Tells what was not understood on the error stream.
void print_complaints(const Preferences& preferences);

} // namespace survey_road
