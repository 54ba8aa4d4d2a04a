#include <string.h>

#include "output.h"
#include "texts.h"

namespace survey_road {

namespace {

constexpr int job_precision = 8;     // decimals of a metre
constexpr int degree_precision = 13; // and as small a step along the globe

// What the reader makes of an escaped text: it undoes the entities one after the other, so that a
// text that looks like an entity itself does not come back.
Text imported(Text text)
{
    const WCHAR* const entities[][2] = {{ZOR_W("&amp;"), ZOR_W("&")},
                                        {ZOR_W("&lt;"), ZOR_W("<")},
                                        {ZOR_W("&gt;"), ZOR_W(">")},
                                        {ZOR_W("&apos;"), ZOR_W("'")},
                                        {ZOR_W("&quot;"), ZOR_W("\"")}};
    for (const auto& entity : entities)
        text.Replace(entity[0], entity[1]);
    return text;
}

// Whether a text comes back from the job as it went in: whole, on one line, and without blanks at
// its ends, which the reader trims.
bool survives(const Text& text)
{
    const Text exported = CXmlParserBase::ReplaceReservedCharactersForExport(text);
    Text trimmed = text;
    return imported(exported).Compare(text.c_str()) == 0 &&
           trimmed.Trim().GetLength() == text.GetLength() && text.FindOneOf(ZOR_W("\r\n")) < 0 &&
           view(text).find(WCHAR{0}) == TextView::npos;
}

class Coordinates : public ICoordInfo
{
public:
    explicit Coordinates(bool has_height) : m_has_height(has_height) {}
    bool hasHorizontal() const override { return true; }
    bool hasHeight() const override { return m_has_height; }

private:
    bool m_has_height;
};

// Collects text and writes it in blocks, so that memory stays flat.
class JobFile
{
public:
    explicit JobFile(base::PlatformFile file) : m_file(file) {}

    void write(const Text& text)
    {
        for (int i = 0; i < text.GetLength(); ++i) {
            m_block += static_cast<char>(text[i] & 0xFF);
            m_block += static_cast<char>(text[i] >> 8);
        }
        if (m_block.size() > 1 << 16)
            flush();
    }
    // False once anything failed.
    bool flush()
    {
        const auto size = static_cast<unsigned int>(m_block.size());
        m_ok = m_ok && base::WritePlatformFile(m_file, m_block.data(), size) == size;
        m_block.clear();
        return m_ok;
    }

private:
    base::PlatformFile m_file;
    std::string m_block = "\xFF\xFE";
    bool m_ok = true;
};

// A text is a value, not an attribute: an attribute cannot hold a double quote in this dialect.
Text inline_element(const Text& tag, const Text& value)
{
    const DWORD one_line = CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_INLINE);
    Text text = CXmlParserBase::OpenTag(tag, one_line);
    text += CXmlParserBase::ReplaceReservedCharactersForExport(value);
    text += CXmlParserBase::CloseTag(tag, one_line);
    return text;
}

// <Geographic> with latitude and longitude in degrees and, perhaps, the elevation.
Text geographic_element(const Point& point)
{
    const Text tag(ZOR_W("Geographic"));
    Text text = CXmlParserBase::OpenTag(tag, 0);
    text += inline_element(ZOR_W("Latitude"),
                           zor_formats::DoubleToString(point.northing, degree_precision));
    text += inline_element(ZOR_W("Longitude"),
                           zor_formats::DoubleToString(point.easting, degree_precision));
    if (point.has_elevation)
        text += inline_element(ZOR_W("Ellipsoidal"),
                               zor_formats::DoubleToString(point.elevation, job_precision));
    text += CXmlParserBase::CloseTag(tag, 0);
    return text;
}

void write_point(JobFile& file, const Point& point, const Text& name, const Text& description)
{
    const Text tag(ZOR_W("Point"));
    Text text = CXmlParserBase::OpenTag(tag, 0);
    text += inline_element(ZOR_W("Name"), name);
    if (!description.empty())
        text += inline_element(ZOR_W("Desc"), description);
    if (point.geographic)
        text += geographic_element(point);
    else
        text += formNECoordinates(Coordinates(point.has_elevation), point.northing, point.easting,
                                  point.elevation, ZOR_W("Coordinates"), job_precision);
    text += CXmlParserBase::CloseTag(tag, 0);
    file.write(text);
}

// <SurveyJob version="1">
Text job_start(const Text& tag)
{
    Text text = CXmlParserBase::OpenTag(
        tag, CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_OPEN_ATTRIBUTES));
    text += CXmlParserBase::FormAttrib(ZOR_W("version"), ZOR_W("1"), false);
    text += ZOR_W(">\r\n");
    return text;
}

bool write_points(JobFile& file, const PointSet& points, size_t& lost)
{
    const Text job(ZOR_W("SurveyJob"));
    file.write(ZOR_W("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"));
    file.write(job_start(job));
    for (const Point& point : points) {
        const TextView name_text = points.name(point), description_text = points.description(point);
        const Text name(name_text.data(), static_cast<int>(name_text.size()));
        const Text description(description_text.data(), static_cast<int>(description_text.size()));
        if (survives(name) && survives(description)) {
            write_point(file, point, name, description);
        } else {
            ++lost;
            fprintf(
                stderr, "%s\n",
                tr("point {1} is not in the job: the XML dialect cannot carry its text", utf8(name))
                    .c_str());
        }
    }
    file.write(CXmlParserBase::CloseTag(job, 0));
    return file.flush();
}

} // namespace

bool write_job(const Text& path, const PointSet& points, size_t& lost, std::string& error)
{
    // Written aside and renamed, so that an older job is there until the new one is whole.
    Text aside = path;
    aside += ZOR_W(".new");
    base::PlatformFileError reason;
    const base::PlatformFile file = base::CreatePlatformFileUnsafe(
        aside, base::PLATFORM_FILE_CREATE_ALWAYS | base::PLATFORM_FILE_WRITE, nullptr, &reason);
    if (file == INVALID_HANDLE_VALUE) {
        error = tr("cannot be written");
        return false;
    }
    JobFile job(file);
    bool ok = write_points(job, points, lost);
    ok = base::FlushPlatformFile(file) && ok;
    ok = base::ClosePlatformFile(file) && ok;
    try {
        if (!ok) {
            error = tr("could not be written whole");
            base::CFile::Remove(aside.c_str());
            return false;
        }
        if (base::CFile::FileExists(path.c_str()))
            base::CFile::Remove(path.c_str());
        base::CFile::Rename(aside.c_str(), path.c_str());
    } catch (const std::exception& failure) {
        error = failure.what();
        return false;
    }
    return true;
}

} // namespace survey_road
