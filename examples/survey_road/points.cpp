#include "points.h"

namespace survey_road {

void PointSet::add(const Position& position, const Text& name, const Text& description)
{
    const Point point{position.northing,
                      position.easting,
                      position.elevation.value_or(0.0),
                      position.elevation.has_value(),
                      position.geographic,
                      m_pool.size(),
                      name.length(),
                      description.length()};
    m_pool += view(name);
    m_pool += view(description);
    m_points.push_back(point);
    m_geographic += point.geographic;
}

} // namespace survey_road
