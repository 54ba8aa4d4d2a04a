// The way from each point to the next.
#include <math.h>

#include <algorithm>

#include "angles.h"
#include "output.h"
#include "texts.h"

namespace survey_road {

namespace {

std::string bearing_of(double north, double east, int decimals)
{
    constexpr double degrees_per_radian = 57.29577951308232;
    // Two points in one place have no bearing.
    if (north == 0 && east == 0)
        return "-";
    return utf8(bearing_text(atan2(east, north) * degrees_per_radian, decimals));
}

} // namespace

void print_legs(const PointSet& points, int precision)
{
    // At a kilometre a tenth of a second is half a millimetre.
    const int seconds = std::max(precision - 2, 0);
    const size_t legs = points.empty() ? 0 : points.size() - 1;
    size_t left_out = 0;
    for (size_t i = 0; i < legs; ++i)
        left_out += points[i].geographic || points[i + 1].geographic;
    if (left_out < legs)
        print_aligned({{key("From"), false},
                       {key("To"), false},
                       {key("Distance"), true},
                       {key("Bearing"), true}},
                      legs, [&](size_t i) -> Row {
                          const Point &from = points[i], &to = points[i + 1];
                          if (from.geographic || to.geographic)
                              return {};
                          const double north = to.northing - from.northing,
                                       east = to.easting - from.easting;
                          const double distance = sqrt(north * north + east * east);
                          return {utf8(points.name(from)), utf8(points.name(to)),
                                  utf8(zor_formats::DoubleToString(distance, precision)),
                                  bearing_of(north, east, seconds)};
                      });
    if (left_out > 0)
        puts(tr("{1} legs from or to geographic points have no grid bearing",
                std::to_string(left_out))
                 .c_str());
    if (legs == 0)
        puts(tr("one point has no leg").c_str());
}

} // namespace survey_road
