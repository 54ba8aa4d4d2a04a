// survey_road/output.h: the table, the summary and the job file.
#pragma once

#include <string>

#include "points.h"

namespace survey_road {

// Points with aligned columns, on standard output.
void print_table(const PointSet& points, int precision);

// Count, extent, elevations, series with their next free names, on standard output. Names that
// stand more than once go to the error stream.
void print_summary(const PointSet& points, int precision);

// Writes a job, UTF-16 with a mark, that reads back as the same points, coordinates to 8 decimals.
// Points whose texts the XML dialect cannot carry are named on the error stream, and counted in
// `lost`. False with the reason in `error` if the file could not be written; an older file of the
// name is then still there.
bool write_job(const Text& path, const PointSet& points, size_t& lost, std::string& error);

} // namespace survey_road
