#include "points.h"

namespace survey_road {

void PointSet::add(double northing, double easting, const double* elevation, const Text& name,
                   const Text& description)
{
    Point point{northing,
                easting,
                elevation == nullptr ? 0.0 : *elevation,
                elevation != nullptr,
                m_pool.size(),
                name.length(),
                description.length()};
    m_pool += view(name);
    m_pool += view(description);
    m_points.push_back(point);
}

} // namespace survey_road
