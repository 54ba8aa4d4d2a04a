// survey_road/angles.h: angles as surveyors write and read them.
#pragma once

#include <string>

#include "points.h"

namespace survey_road {

enum class Axis
{
    Latitude,
    Longitude
};

// Whether a value is meant as an angle of this axis: digits with a degree, minute or second sign,
// or with a letter of the axis (N and S, E and W) at its end.
bool looks_like_angle(const Text& text, Axis axis);

// Reads a latitude or longitude in any spelling of the library's (12.3045N, 12 30 45.5 N,
// 12-30-45N, 12.5°, 12°30.5'S, -12°30'45.05"), with its letter behind it or a minus in front, into
// degrees, north and east positive. Empty, or what is wrong.
std::string parse_angle(const Text& text, Axis axis, double& degrees);

// Degrees, minutes and seconds of an arc in degrees, with `decimals` of a second.
Text angle_text(double degrees, int decimals);

// The same with the letter of its half in place of the sign: 12°30'45.05" S
Text globe_text(double degrees, Axis axis, int decimals);

// The bearing of an azimuth in degrees, clockwise from north: N 12°30'45.1" E
Text bearing_text(double azimuth, int decimals);

} // namespace survey_road
