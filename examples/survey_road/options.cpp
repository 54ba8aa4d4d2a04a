#include "options.h"

#include "texts.h"

namespace survey_road {

namespace {

// Each is translated by itself.
constexpr const char* usage_lines[] = {
    key("usage: survey_road [options] FILE..."),
    "",
    key("Reads survey points, prints them as a table with a summary, and names the next free"),
    key("point of each series. A file may be a point list (name, northing, easting, elevation,"),
    key("description, divided by commas, tabs, semicolons or blanks), a LandXML file, or a job"),
    key("that this program wrote. What a file is is told by its content. In a list a latitude"),
    key("and a longitude may stand for northing and easting: 50°05'12.5\"N, 50 05 12.5 N."),
    "",
    key("  --precision N   decimals in the table, 0 to 9 (3)"),
    key("  --out JOB.xml   writes the points as a job"),
    key("  --bearings      prints distance and bearing from each point to the next"),
    key("  --check         only reads and reports"),
    key("  --columns       tells what the columns of any delimited text hold, and reads no points"),
    key("  --lang CODE     the language of the texts: en, de, cs"),
    key("  --log           prints where the log of this run is"),
    key("  --crash-test    faults on purpose, to show what support gets of a fault"),
    key("  --timing        prints points per second and MB/s"),
    key("  --help, --version"),
    "",
    key("Precision, delimiter and language can also stand in survey_road.ini in the user's "
        "folder."),
    "",
    key("exit code: 0 all well; 1 some lines or points were skipped; 2 nothing was read or the"),
    key("job was not written; 3 wrong usage"),
};

bool is(const Text& argument, const WCHAR* option)
{
    return argument.Compare(option) == 0;
}

} // namespace

bool take_precision(const Text& text, std::optional<int>& precision)
{
    int value = 0;
    if (text.empty() || !zor_formats::is_str_int(text.c_str(), false) ||
        !zor_formats::StringToInt(text.c_str(), value) || value < 0 || value > 9)
        return false;
    precision = value;
    return true;
}

bool parse_options(const std::vector<Text>& arguments, Options& options, UsageError& error)
{
    for (size_t i = 0; i + 1 < arguments.size() && !is(arguments[i], ZOR_W("--")); ++i) {
        if (is(arguments[i], ZOR_W("--lang")))
            options.language = arguments[i + 1];
    }
    bool only_files = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const Text& argument = arguments[i];
        const bool has_value = i + 1 < arguments.size();
        if (only_files || argument[0] != '-') {
            options.files.push_back(argument);
        } else if (is(argument, ZOR_W("--"))) {
            only_files = true;
        } else if (is(argument, ZOR_W("--precision"))) {
            if (!has_value || !take_precision(arguments[++i], options.precision)) {
                error.text = key("--precision takes a whole number from 0 to 9");
                return false;
            }
        } else if (is(argument, ZOR_W("--out"))) {
            if (!has_value) {
                error.text = key("--out takes the name of a file");
                return false;
            }
            options.out = arguments[++i];
        } else if (is(argument, ZOR_W("--lang"))) {
            if (!has_value) {
                error.text = key("--lang takes a language, such as de");
                return false;
            }
            ++i;
        } else if (is(argument, ZOR_W("--check"))) {
            options.check = true;
        } else if (is(argument, ZOR_W("--bearings"))) {
            options.bearings = true;
        } else if (is(argument, ZOR_W("--columns"))) {
            options.columns = true;
        } else if (is(argument, ZOR_W("--crash-test"))) {
            options.crash_test = true;
        } else if (is(argument, ZOR_W("--log"))) {
            options.log = true;
        } else if (is(argument, ZOR_W("--timing"))) {
            options.timing = true;
        } else if (is(argument, ZOR_W("--help")) || is(argument, ZOR_W("-h"))) {
            options.help = true;
        } else if (is(argument, ZOR_W("--version"))) {
            options.version = true;
        } else {
            error = {key("unknown option {1}"), utf8(argument)};
            return false;
        }
    }
    if (options.files.empty() && !options.help && !options.version && !options.log &&
        !options.crash_test) {
        error.text = key("no file given");
        return false;
    }
    return true;
}

std::string usage()
{
    std::string text;
    for (const char* const line : usage_lines)
        text += (*line == 0 ? std::string() : tr(line)) + '\n';
    return text;
}

} // namespace survey_road
