// survey_road/points.h: the points of a run, stored without an allocation for each.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../common/console.h"

namespace survey_road {

using host::columns;
using host::from_utf8;
using host::is_terminal;
using host::Text;
using host::TextView;
using host::utf8;
using host::view;

// Where a point is: in a grid, or on the globe.
struct Position
{
    double northing, easting; // or latitude and longitude in degrees, north and east positive
    std::optional<double> elevation;
    bool geographic = false;
};

struct Point
{
    double northing, easting, elevation; // as in Position
    bool has_elevation, geographic;
    size_t text; // where its name and description begin in the pool
    unsigned int name_length, description_length;
};

class PointSet
{
public:
    void add(const Position& position, const Text& name, const Text& description);

    size_t size() const { return m_points.size(); }
    bool empty() const { return m_points.empty(); }
    size_t geographic_count() const { return m_geographic; }
    const Point& operator[](size_t index) const { return m_points[index]; }
    std::vector<Point>::const_iterator begin() const { return m_points.begin(); }
    std::vector<Point>::const_iterator end() const { return m_points.end(); }

    TextView name(const Point& point) const
    {
        return TextView(m_pool).substr(point.text, point.name_length);
    }
    TextView description(const Point& point) const
    {
        return TextView(m_pool).substr(point.text + point.name_length, point.description_length);
    }

private:
    std::vector<Point> m_points;
    std::basic_string<WCHAR> m_pool;
    size_t m_geographic = 0;
};

} // namespace survey_road
