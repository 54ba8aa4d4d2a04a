// Point lists: name, northing, easting, elevation, description.
#include "console.h"
#include "reader.h"

namespace survey_road {

namespace {

using zor_formats::StringArray;

// The delimiter of a line: the first of these that divides three values.
char delimiter_of(const Text& line)
{
    for (const char candidate : {'\t', ';', ','}) {
        const int first = line.Find(static_cast<WCHAR>(candidate));
        if (first >= 0 && line.Find(static_cast<WCHAR>(candidate), first + 1) >= 0)
            return candidate;
    }
    return ' ';
}

// A run of blanks divides once.
void fold_blanks(Text& line)
{
    while (line.Replace(ZOR_W("  "), ZOR_W(" ")) > 0) {
    }
}

// What stands behind the elevation is the description, as it is written.
Text description_of(const Text& line, char delimiter)
{
    int start = 0;
    for (int i = 0; i < 4; ++i) {
        const int found = line.Find(static_cast<WCHAR>(delimiter), start);
        if (found < 0)
            return Text();
        start = found + 1;
    }
    Text description = line.Mid(start);
    return description.Trim();
}

bool has_digit(const Text& text)
{
    return text.FindOneOf(ZOR_W("0123456789")) >= 0;
}

// A first line without a digit where the numbers belong names the columns.
bool is_heading(const StringArray& values)
{
    return values.GetSize() >= 3 && !has_digit(values[1]) && !has_digit(values[2]);
}

// Empty if the line is a point.
std::string add_point(const Text& line, const StringArray& values, char delimiter, PointSet& points)
{
    if (values.GetSize() < 3)
        return "too few values: name, northing and easting are needed";
    if (values[0].empty())
        return "the name is empty";
    double numbers[3] = {};
    const char* const names[] = {"northing", "easting", "elevation"};
    bool has_elevation = false;
    for (int i = 0; i < 3; ++i) {
        const Text text = i + 1 < values.GetSize() ? values[i + 1] : Text();
        if (i == 2 && text.empty())
            break;
        if (!parse_number(text, numbers[i]))
            return std::string("the ") + names[i] + " is no number: \"" + utf8(text) + "\"";
        has_elevation = i == 2;
    }
    points.add(numbers[0], numbers[1], has_elevation ? &numbers[2] : nullptr, values[0],
               description_of(line, delimiter));
    return std::string();
}

} // namespace

void read_list(const Text& file, PointSet& points, Report& report, Progress& progress)
{
    CTextFile text;
    if (!text.Open(resolved(file).c_str())) {
        report.failed(file, "cannot be opened");
        return;
    }
    const size_t before = points.size();
    char delimiter = 0;
    size_t number = 0;
    Text line;
    StringArray values;
    // Empty lines are read too, so that the numbers are right; behind a lone CR at the end of the
    // file they come for ever, and the end is told by the file.
    while (text.GetNextLine(line, false) && !(line.empty() && text.IsEndOfFile())) {
        ++number;
        if (number == 1 && text.IsUTF8())
            line = line.Mid(Text("\xEF\xBB\xBF").GetLength());
        Text trimmed = line;
        if (trimmed.Trim().empty() || trimmed[0] == '#')
            continue;
        const bool first = delimiter == 0;
        if (first)
            delimiter = delimiter_of(trimmed);
        if (delimiter == ' ')
            fold_blanks(trimmed);
        values.RemoveAll();
        zor_formats::ParseValues(trimmed, values, delimiter, Text());
        if (first && is_heading(values)) {
            report.note(file, "line " + std::to_string(number) + " names the columns");
            continue;
        }
        const std::string error = add_point(trimmed, values, delimiter, points);
        if (!error.empty())
            report.skipped(file, number, error);
        progress.point(points.size());
    }
    if (points.size() == before)
        report.failed(file, "is no survey file: no points were found");
}

} // namespace survey_road
