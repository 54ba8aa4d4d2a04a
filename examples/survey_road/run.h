// survey_road/run.h: the program behind its entry points.
#pragma once

#include <vector>

#include "points.h"

namespace survey_road {

// Runs with the command line's arguments, without the program's name; the exit code.
int run(const std::vector<Text>& arguments);

} // namespace survey_road
