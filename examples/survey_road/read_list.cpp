// Point lists: name, northing, easting, elevation, description.
#include "angles.h"
#include "list_line.h"
#include "reader.h"
#include "texts.h"

namespace survey_road {

namespace {

using zor_formats::StringArray;

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

// Empty if the values are a position.
std::string parse_grid(const StringArray& values, Position& position)
{
    const char* const names[] = {key("northing"), key("easting")};
    double* const targets[] = {&position.northing, &position.easting};
    for (int i = 0; i < 2; ++i) {
        if (!parse_number(values[i + 1], *targets[i]))
            return tr("the {1} is no number: \"{2}\"", tr(names[i]), utf8(values[i + 1]));
    }
    return std::string();
}

std::string parse_globe(const StringArray& values, Position& position)
{
    position.geographic = true;
    const std::string error = parse_angle(values[1], Axis::Latitude, position.northing);
    return error.empty() ? parse_angle(values[2], Axis::Longitude, position.easting) : error;
}

// Empty if the line is a point.
std::string add_point(const ListFile& list, PointSet& points)
{
    const StringArray& values = list.values();
    if (values.GetSize() < 3)
        return tr("too few values: name, northing and easting are needed");
    if (values[0].empty())
        return tr("the name is empty");
    Position position{};
    const std::string error =
        looks_like_angle(values[1], Axis::Latitude) || looks_like_angle(values[2], Axis::Longitude)
            ? parse_globe(values, position)
            : parse_grid(values, position);
    if (!error.empty())
        return error;
    if (values.GetSize() > 3 && !values[3].empty()) {
        double elevation = 0;
        if (!parse_number(values[3], elevation))
            return tr("the {1} is no number: \"{2}\"", tr("elevation"), utf8(values[3]));
        position.elevation = elevation;
    }
    points.add(position, values[0], description_of(list.line(), list.delimiter()));
    return std::string();
}

} // namespace

void read_list(const Text& file, PointSet& points, Report& report, Progress& progress)
{
    ListFile list;
    if (!list.open(file)) {
        report.failed(file, tr("cannot be opened"));
        return;
    }
    const size_t before = points.size();
    bool first = true;
    while (list.next()) {
        if (first && is_heading(list.values())) {
            report.note(file,
                        tr("note: line {1} names the columns", std::to_string(list.number())));
        } else {
            const std::string error = add_point(list, points);
            if (!error.empty())
                report.skipped(file, list.number(), error);
            progress.point(points.size());
        }
        first = false;
    }
    if (points.size() == before)
        report.failed(file, tr("is no survey file: no points were found"));
}

} // namespace survey_road
