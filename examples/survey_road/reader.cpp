#include "reader.h"

#include <filesystem>

#include "texts.h"

namespace survey_road {

namespace {

void message(const Text& file, const std::string& rest)
{
    zor_logging::ZOR_TRACE_ALWAYS(ZOR_W("%s%s"), file.c_str(), from_utf8(rest).c_str());
    fprintf(stderr, "%s%s\n", utf8(file).c_str(), rest.c_str());
}

// The file's first bytes and its last one or two, read once before anything else looks at it.
struct Glance
{
    bool opened = false;
    bool folder = false;
    std::string head;
    std::string tail;
};

Glance glance_at(const Text& file)
{
    Glance glance;
    base::PlatformFileError error;
    const base::PlatformFile handle = base::CreatePlatformFileUnsafe(
        file, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ, nullptr, &error);
    bool is_folder = false;
    glance.folder = base::CFile::FileExists(file.c_str(), is_folder) && is_folder;
    if (handle == INVALID_HANDLE_VALUE)
        return glance;
    glance.opened = true;
    char buffer[4096];
    unsigned int count = base::ReadPlatformFile(handle, buffer, sizeof buffer);
    if (count <= sizeof buffer)
        glance.head.assign(buffer, count);
    const INT64 size = base::SeekPlatformFile(handle, base::PLATFORM_FILE_FROM_END, 0);
    base::SeekPlatformFile(handle, base::PLATFORM_FILE_FROM_BEGIN, size < 2 ? 0 : size - 2);
    count = base::ReadPlatformFile(handle, buffer, 2);
    if (count <= 2)
        glance.tail.assign(buffer, count);
    base::ClosePlatformFile(handle);
    return glance;
}

bool is_utf16(const Glance& glance)
{
    return glance.head.size() >= 2 && glance.head[0] == '\xFF' && glance.head[1] == '\xFE';
}

bool ends_in_lone_return(const Glance& glance)
{
    if (is_utf16(glance))
        return glance.tail == std::string("\r\0", 2);
    return !glance.tail.empty() && glance.tail.back() == '\r';
}

// The first character that is neither blank, line end, mark nor the zero half of a unit.
char first_character(const Glance& glance)
{
    for (const char c : glance.head) {
        if (static_cast<unsigned char>(c) > 0x20 && static_cast<unsigned char>(c) < 0x80)
            return c;
    }
    return 0;
}

} // namespace

void Report::skipped(const Text& file, size_t line, const std::string& text)
{
    ++m_skipped;
    message(file, ":" + std::to_string(line) + ": " + text);
}

void Report::skipped(const Text& file, const std::string& where, const std::string& text)
{
    ++m_skipped;
    message(file, ": " + where + ": " + text);
}

void Report::failed(const Text& file, const std::string& text)
{
    ++m_failed;
    message(file, ": " + text);
}

void Report::note(const Text& file, const std::string& text)
{
    message(file, ": " + text);
}

void Progress::point(size_t count)
{
    constexpr size_t step = 1 << 16;
    if (count % step != 0 || count == 0 || !is_terminal(stderr))
        return;
    fprintf(stderr, "\r%s", tr("{1} points", std::to_string(count)).c_str());
    m_shown = true;
}

Progress::~Progress()
{
    if (m_shown)
        fputs("\r                    \r", stderr);
}

bool parse_number(const Text& text, double& value)
{
    if (!zor_formats::is_str_notempty_double(text, true) || text.FindOneOf(ZOR_W(" \t")) >= 0)
        return false;
    // The filter lets partial input through: a number ends in a digit or its decimal sign.
    const WCHAR last = text[text.GetLength() - 1];
    const bool ends = (last >= '0' && last <= '9') || last == '.' || last == ',';
    return ends && zor_formats::StringToDouble(text, value);
}

Text resolved(const Text& file)
{
    if (file.Find(ZOR_W("..")) < 0)
        return file;
    try {
        const std::filesystem::path path(std::basic_string<WCHAR>(view(file)));
        const auto whole = std::filesystem::absolute(path).lexically_normal().string<WCHAR>();
        return Text(whole.data(), static_cast<int>(whole.size()));
    } catch (const std::exception&) {
        return file; // no path of the system's: opening it tells
    }
}

void read_file(const Text& file, PointSet& points, Report& report, Progress& progress)
{
    const Glance glance = glance_at(file);
    if (glance.folder) {
        report.failed(file, tr("is a folder"));
    } else if (!glance.opened) {
        report.failed(file, tr("cannot be opened"));
    } else if (resolved(file).Find(ZOR_W("..")) >= 0) {
        report.failed(file, tr("cannot be read: the name holds two dots in a row; rename it"));
    } else if (glance.head.empty()) {
        report.failed(file, tr("is empty"));
    } else if (!is_utf16(glance) && glance.head.find('\0') != std::string::npos) {
        report.failed(file, tr("is no survey file: it holds binary data"));
    } else if (first_character(glance) == '<') {
        // The XML reader passes over empty lines, and would for ever behind a lone CR at the end.
        if (ends_in_lone_return(glance))
            report.failed(file, tr("ends in a lone carriage return, which the XML reader does not "
                                   "take; add a line feed"));
        else
            read_xml(file, points, report, progress);
    } else {
        read_list(file, points, report, progress);
    }
}

} // namespace survey_road
