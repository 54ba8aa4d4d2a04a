// survey_road/list_line.h: the lines of a delimited text, split into values.
#pragma once

#include "points.h"

namespace survey_road {

// Tabs, semicolons, commas or blanks divide the values: the first of these that divides three
// values of the first line, for the whole file. Empty lines and lines that begin with "#" are
// passed over.
class ListFile
{
public:
    // False if the file cannot be opened.
    bool open(const Text& file);
    // The next line with something on it; false at the end.
    bool next();

    const Text& line() const { return m_line; } // without blanks at its ends
    const zor_formats::StringArray& values() const { return m_values; }
    size_t number() const { return m_number; } // from 1, every line counted
    char delimiter() const { return m_delimiter; }

private:
    void split();

    CTextFile m_text;
    Text m_line;
    zor_formats::StringArray m_values;
    size_t m_number = 0;
    char m_delimiter = 0;
};

// A first line without a digit where the numbers belong names the columns.
bool is_heading(const zor_formats::StringArray& values);

} // namespace survey_road
