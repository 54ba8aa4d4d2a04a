#include <algorithm>
#include <limits>
#include <map>
#include <unordered_set>

#include "angles.h"
#include "output.h"
#include "texts.h"

namespace survey_road {

namespace {

struct Range
{
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();
    size_t count = 0;

    void add(double value)
    {
        least = std::min(least, value);
        most = std::max(most, value);
        ++count;
    }
};

// A heading and what it is of.
void print_line(const char* name, const std::string& text)
{
    std::string heading = tr(name);
    heading.append(10 - std::min<size_t>(10, columns(heading)), ' ');
    printf("%s %s\n", heading.c_str(), text.c_str());
}

void print_range(const char* name, const Range& range, int precision)
{
    print_line(name,
               tr("{1} to {2} ({3})", utf8(zor_formats::DoubleToString(range.least, precision)),
                  utf8(zor_formats::DoubleToString(range.most, precision)),
                  utf8(zor_formats::DoubleToString(range.most - range.least, precision))));
}

void print_globe_range(const char* name, const Range& range, Axis axis, int precision)
{
    print_line(name, tr("{1} to {2}", utf8(globe_text(range.least, axis, precision + 2)),
                        utf8(globe_text(range.most, axis, precision + 2))));
}

bool is_digit(WCHAR unit)
{
    return unit >= '0' && unit <= '9';
}

size_t number_start(TextView name)
{
    size_t start = name.size();
    while (start > 0 && is_digit(name[start - 1]))
        --start;
    return start;
}

// Whether the digits of `a` are a smaller number than those of `b`, however many they are.
bool is_smaller(TextView a, TextView b)
{
    a.remove_prefix(std::min(a.find_first_not_of('0'), a.size()));
    b.remove_prefix(std::min(b.find_first_not_of('0'), b.size()));
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

struct Series
{
    size_t count = 0;
    TextView highest;
};

using Names = std::unordered_set<TextView>;

// The names of all points; those that stand more than once are told.
Names collect_names(const PointSet& points)
{
    constexpr size_t most_told = 20;
    Names names;
    names.reserve(points.size());
    size_t repeated = 0;
    for (const Point& point : points) {
        const TextView name = points.name(point);
        if (!names.insert(name).second && ++repeated <= most_told)
            fprintf(stderr, "%s\n", tr("the name {1} stands more than once", utf8(name)).c_str());
    }
    if (repeated > most_told)
        fprintf(stderr, "%s\n",
                tr("and {1} more names stand more than once", std::to_string(repeated - most_told))
                    .c_str());
    return names;
}

std::map<TextView, Series> collect_series(const PointSet& points)
{
    std::map<TextView, Series> all;
    for (const Point& point : points) {
        const TextView name = points.name(point);
        const size_t start = number_start(name);
        if (start == name.size())
            continue;
        Series& series = all[name.substr(0, start)];
        if (series.count++ == 0 || is_smaller(series.highest.substr(start), name.substr(start)))
            series.highest = name;
    }
    return all;
}

// Empty if there is none: the number has grown beyond what a name can count.
Text next_free(TextView highest, const Names& names)
{
    Text name(highest.data(), static_cast<int>(highest.size()));
    do {
        if (!zor_formats::DoIncPtno(name, 1))
            return Text();
    } while (names.count(view(name)) != 0);
    return name;
}

} // namespace

void print_summary(const PointSet& points, int precision)
{
    Range northing, easting, latitude, longitude, elevation;
    for (const Point& point : points) {
        (point.geographic ? latitude : northing).add(point.northing);
        (point.geographic ? longitude : easting).add(point.easting);
        if (point.has_elevation)
            elevation.add(point.elevation);
    }
    puts(tr("{1} points", std::to_string(points.size())).c_str());
    if (northing.count > 0) {
        print_range(key("northing"), northing, precision);
        print_range(key("easting"), easting, precision);
    }
    if (latitude.count > 0) {
        puts(tr("{1} of them geographic", std::to_string(latitude.count)).c_str());
        print_globe_range(key("latitude"), latitude, Axis::Latitude, precision);
        print_globe_range(key("longitude"), longitude, Axis::Longitude, precision);
    }
    if (elevation.count > 0)
        print_range(key("elevation"), elevation, precision);
    if (elevation.count < points.size())
        puts(tr("{1} points have no elevation", std::to_string(points.size() - elevation.count))
                 .c_str());

    const Names names = collect_names(points);
    for (const auto& [prefix, series] : collect_series(points)) {
        const Text next = next_free(series.highest, names);
        puts(tr("series {1}: {2} points, next free name {3}",
                prefix.empty() ? tr("(numbers)") : utf8(prefix), std::to_string(series.count),
                next.empty() ? tr("none") : utf8(next))
                 .c_str());
    }
}

} // namespace survey_road
