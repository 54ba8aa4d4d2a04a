#include <algorithm>
#include <array>

#include "console.h"
#include "output.h"

namespace survey_road {

namespace {

constexpr size_t column_count = 5;
using Row = std::array<std::string, column_count>;

std::string number(double value, int precision)
{
    return utf8(zor_formats::DoubleToString(value, precision));
}

Row row_of(const PointSet& points, const Point& point, int precision)
{
    return {utf8(points.name(point)), number(point.northing, precision),
            number(point.easting, precision),
            point.has_elevation ? number(point.elevation, precision) : "",
            utf8(points.description(point))};
}

// Names and descriptions stand left, numbers right; nothing stands behind the last text.
void print_row(const Row& row, const std::array<size_t, column_count>& widths)
{
    std::string line;
    for (size_t i = 0; i < column_count; ++i) {
        const std::string padding(widths[i] - std::min(widths[i], columns(row[i])), ' ');
        const bool right = i >= 1 && i <= 3;
        line += right ? padding + row[i] : row[i] + padding;
        line += "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    puts(line.c_str());
}

} // namespace

void print_table(const PointSet& points, int precision)
{
    const Row heading = {"Name", "Northing", "Easting", "Elevation", "Description"};
    std::array<size_t, column_count> widths;
    for (size_t i = 0; i < column_count; ++i)
        widths[i] = columns(heading[i]);
    // Twice over the points, so that no table stands in memory.
    for (const Point& point : points) {
        const Row row = row_of(points, point, precision);
        for (size_t i = 0; i < column_count; ++i)
            widths[i] = std::max(widths[i], columns(row[i]));
    }
    print_row(heading, widths);
    for (const Point& point : points)
        print_row(row_of(points, point, precision), widths);
}

} // namespace survey_road
