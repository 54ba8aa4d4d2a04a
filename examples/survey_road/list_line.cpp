#include "list_line.h"

#include "reader.h"

namespace survey_road {

namespace {

char preferred_delimiter = 0;

// The delimiter of a line: the first of these that divides three values.
char delimiter_of(const Text& line)
{
    for (const char candidate : {'\t', ';', ','}) {
        const int first = line.Find(static_cast<WCHAR>(candidate));
        if (first >= 0 && line.Find(static_cast<WCHAR>(candidate), first + 1) >= 0)
            return candidate;
    }
    return ' ';
}

// A run of blanks divides once.
void fold_blanks(Text& line)
{
    while (line.Replace(ZOR_W("  "), ZOR_W(" ")) > 0) {
    }
}

bool has_digit(const Text& text)
{
    return text.FindOneOf(ZOR_W("0123456789")) >= 0;
}

} // namespace

bool is_heading(const zor_formats::StringArray& values)
{
    return values.GetSize() >= 3 && !has_digit(values[1]) && !has_digit(values[2]);
}

void set_list_delimiter(char delimiter)
{
    preferred_delimiter = delimiter;
}

bool ListFile::open(const Text& file)
{
    return m_text.Open(resolved(file).c_str()) != 0;
}

bool ListFile::next()
{
    // Empty lines are read too, so that the numbers are right; behind a lone CR at the end of the
    // file they come for ever, and the end is told by the file.
    while (m_text.GetNextLine(m_line, false) && !(m_line.empty() && m_text.IsEndOfFile())) {
        if (++m_number == 1 && m_text.IsUTF8())
            m_line = m_line.Mid(Text("\xEF\xBB\xBF").GetLength());
        Text trimmed = m_line;
        if (trimmed.Trim().empty() || trimmed[0] == '#')
            continue;
        if (m_delimiter == 0)
            m_delimiter = preferred_delimiter != 0 ? preferred_delimiter : delimiter_of(trimmed);
        // A tab in front is an empty value where tabs divide.
        m_line.TrimRight();
        m_line.TrimLeft(m_delimiter == '\t' ? ZOR_W(" ") : ZOR_W(" \t"));
        split();
        return true;
    }
    return false;
}

void ListFile::split()
{
    const auto delimiter = static_cast<WCHAR>(m_delimiter);
    if (m_delimiter == ' ')
        fold_blanks(m_line);
    m_values.RemoveAll();
    // The library's splitting takes a delimiter in front for a part of the first value.
    int start = 0;
    for (; start < m_line.GetLength() && m_line[start] == delimiter; ++start)
        m_values.Add(Text());
    zor_formats::ParseValues(m_line.Mid(start), m_values, m_delimiter, Text());
}

} // namespace survey_road
