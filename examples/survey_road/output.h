// survey_road/output.h: tables and the summary, on standard output, and the job file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "points.h"

namespace survey_road {

// A column of a table: texts stand left, numbers right.
struct Column
{
    const char* heading;
    bool right;
};
using Row = std::vector<std::string>;

// Prints `count` rows with aligned columns; each is asked for twice, and an empty one is left out.
void print_aligned(const std::vector<Column>& table, size_t count,
                   const std::function<Row(size_t)>& row_of);

// The points, those of a grid before those on the globe.
void print_table(const PointSet& points, int precision);

// Distance and quadrant bearing from each grid point to the next.
void print_legs(const PointSet& points, int precision);

// Count, extent, elevations, series with their next free names. Names that
// stand more than once go to the error stream.
void print_summary(const PointSet& points, int precision);

// Writes a job, UTF-16 with a mark, that reads back as the same points, coordinates to 8 decimals.
// Points whose texts the XML dialect cannot carry are named on the error stream, and counted in
// `lost`. False with the reason in `error` if the file could not be written; an older file of the
// name is then still there.
bool write_job(const Text& path, const PointSet& points, size_t& lost, std::string& error);

} // namespace survey_road
