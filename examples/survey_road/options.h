// survey_road/options.h: the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "points.h"

namespace survey_road {

struct Options
{
    std::vector<Text> files;
    Text out;
    std::optional<int> precision; // as given; else the user's preference, else 3
    bool check = false;
    bool bearings = false;
    bool columns = false;
    bool log = false;
    bool timing = false;
    bool help = false;
    bool version = false;
};

// What the program's end tells: see usage().
enum ExitCode
{
    all_well = 0,
    some_skipped = 1,
    nothing_read = 2,
    wrong_usage = 3
};

// Takes a whole number from 0 to 9; false for all else.
bool take_precision(const Text& text, std::optional<int>& precision);

// False with what is wrong in `error`.
bool parse_options(const std::vector<Text>& arguments, Options& options, std::string& error);

// The text of --help.
const char* usage();

} // namespace survey_road
