#include <algorithm>

#include "angles.h"
#include "output.h"
#include "texts.h"

namespace survey_road {

namespace {

std::string number(double value, int precision)
{
    return utf8(zor_formats::DoubleToString(value, precision));
}

std::string elevation(const Point& point, int precision)
{
    return point.has_elevation ? number(point.elevation, precision) : "";
}

void print_row(const std::vector<Column>& table, const Row& row, const std::vector<size_t>& widths)
{
    std::string line;
    for (size_t i = 0; i < table.size(); ++i) {
        const std::string padding(widths[i] - std::min(widths[i], columns(row[i])), ' ');
        line += table[i].right ? padding + row[i] : row[i] + padding;
        line += "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    puts(line.c_str());
}

void print_grid_points(const PointSet& points, int precision)
{
    print_aligned({{key("Name"), false},
                   {key("Northing"), true},
                   {key("Easting"), true},
                   {key("Elevation"), true},
                   {key("Description"), false}},
                  points.size(), [&](size_t i) -> Row {
                      const Point& point = points[i];
                      if (point.geographic)
                          return {};
                      return {utf8(points.name(point)), number(point.northing, precision),
                              number(point.easting, precision), elevation(point, precision),
                              utf8(points.description(point))};
                  });
}

void print_geographic_points(const PointSet& points, int precision)
{
    // A second is some 30 m, a degree some 100 km.
    const int seconds = precision + 2, degrees = precision + 6;
    print_aligned({{key("Name"), false},
                   {key("Latitude"), true},
                   {key("Longitude"), true},
                   {key("Degrees N"), true},
                   {key("Degrees E"), true},
                   {key("Elevation"), true},
                   {key("Description"), false}},
                  points.size(), [&](size_t i) -> Row {
                      const Point& point = points[i];
                      if (!point.geographic)
                          return {};
                      return {utf8(points.name(point)),
                              utf8(globe_text(point.northing, Axis::Latitude, seconds)),
                              utf8(globe_text(point.easting, Axis::Longitude, seconds)),
                              number(point.northing, degrees),
                              number(point.easting, degrees),
                              elevation(point, precision),
                              utf8(points.description(point))};
                  });
}

} // namespace

void print_aligned(const std::vector<Column>& table, size_t count,
                   const std::function<Row(size_t)>& row_of)
{
    std::vector<size_t> widths;
    Row headings;
    for (const Column& column : table) {
        headings.push_back(tr(column.heading));
        widths.push_back(columns(headings.back()));
    }
    // Twice over the rows, so that no table stands in memory.
    for (size_t i = 0; i < count; ++i) {
        const Row row = row_of(i);
        for (size_t j = 0; j < row.size(); ++j)
            widths[j] = std::max(widths[j], columns(row[j]));
    }
    print_row(table, headings, widths);
    for (size_t i = 0; i < count; ++i) {
        const Row row = row_of(i);
        if (!row.empty())
            print_row(table, row, widths);
    }
}

void print_table(const PointSet& points, int precision)
{
    if (points.geographic_count() < points.size())
        print_grid_points(points, precision);
    if (points.geographic_count() > 0 && points.geographic_count() < points.size())
        puts("");
    if (points.geographic_count() > 0)
        print_geographic_points(points, precision);
}

} // namespace survey_road
