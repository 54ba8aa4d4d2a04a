// survey_road/reader.h: reading points from any file that the program understands.
#pragma once

#include <functional>
#include <string>

#include "points.h"

namespace survey_road {

// Where messages go, and how many lines or points were skipped.
class Report
{
public:
    // One line on the error stream: "file:line: text", or "file: where: text".
    void skipped(const Text& file, size_t line, const std::string& text);
    void skipped(const Text& file, const std::string& where, const std::string& text);
    // The file as a whole gave nothing.
    void failed(const Text& file, const std::string& text);
    // Nothing is lost, but the user may want to know.
    void note(const Text& file, const std::string& text);

    size_t skipped_count() const { return m_skipped; }
    size_t failed_count() const { return m_failed; }

private:
    size_t m_skipped = 0;
    size_t m_failed = 0;
};

// The delimiter of every list, or 0 for what each list's first line shows.
void set_list_delimiter(char delimiter);

// Counts points on the error stream, if that is a terminal.
class Progress
{
public:
    void point(size_t count);
    ~Progress();

private:
    bool m_shown = false;
};

// Appends the file's points. What could not be read is in the report.
void read_file(const Text& file, PointSet& points, Report& report, Progress& progress);

// A number as surveyors write it, "." or "," as its decimal sign, with nothing behind it.
bool parse_number(const Text& text, double& value);

// The path without steps to parent folders: the library's readers refuse a path that holds "..".
Text resolved(const Text& file);

// Tells on standard output what each column of a delimited text holds, and which look like name,
// northing, easting and elevation, and why. False if the file holds no lines; the report says why.
bool print_columns(const Text& file, Report& report);

// The two kinds of content.
void read_list(const Text& file, PointSet& points, Report& report, Progress& progress);
void read_xml(const Text& file, PointSet& points, Report& report, Progress& progress);

} // namespace survey_road
