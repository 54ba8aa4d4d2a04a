// survey_road/points.h: the points of a run, stored without an allocation for each.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zorutils/zorutils.h"

namespace survey_road {

using Text = zor_text::CZorStringT<WCHAR>;
using TextView = std::basic_string_view<WCHAR>;

inline TextView view(const Text& text)
{
    return TextView(text.c_str(), text.length());
}

struct Point
{
    double northing, easting, elevation;
    bool has_elevation;
    size_t text; // where its name and description begin in the pool
    unsigned int name_length, description_length;
};

class PointSet
{
public:
    void add(double northing, double easting, const double* elevation, const Text& name,
             const Text& description);

    size_t size() const { return m_points.size(); }
    bool empty() const { return m_points.empty(); }
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
};

} // namespace survey_road
