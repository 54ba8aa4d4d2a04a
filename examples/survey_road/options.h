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
    std::optional<Text> language; // as precision
    std::optional<int> precision; // as given; else the user's preference, else 3
    bool check = false;
    bool bearings = false;
    bool columns = false;
    bool crash_test = false;
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

// What is wrong with the command line: a text to translate, and what {1} in it is.
struct UsageError
{
    const char* text = nullptr;
    std::string value;
};

// False with what is wrong in `error`. The language is taken in any case.
bool parse_options(const std::vector<Text>& arguments, Options& options, UsageError& error);

// The text of --help, in the user's language.
std::string usage();

} // namespace survey_road
