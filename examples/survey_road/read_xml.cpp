// LandXML points (CgPoint, P) and the program's own jobs (Point).
#include <memory>
#include <optional>

#include "reader.h"
#include "texts.h"

namespace survey_road {

namespace {

class XmlPoints
{
public:
    XmlPoints(const Text& file, CXmlParser& parser, PointSet& points, Report& report)
        : m_file(file), m_parser(parser), m_points(points), m_report(report)
    {
    }

    void token(const Text& tag, const Text& attributes, Text& value);
    // A point that the file's end cut off.
    void end();

private:
    enum class Kind
    {
        None,
        LandXml,
        Job
    };

    void begin(Kind kind, const Text& attributes, const WCHAR* name_attribute, const Text& tag);
    void coordinates(Text& value);
    void number(std::optional<double>& target, const Text& value, const char* what);
    void finish();
    void skip(const std::string& text);

    const Text& m_file;
    CXmlParser& m_parser;
    PointSet& m_points;
    Report& m_report;

    Kind m_kind = Kind::None;
    bool m_bad = false;
    Text m_tag, m_name, m_description;
    std::optional<double> m_northing, m_easting, m_elevation, m_latitude, m_longitude;
};

bool is(const Text& text, const WCHAR* other)
{
    return text.Compare(other) == 0;
}

bool closes_itself(const Text& attributes)
{
    return attributes.GetLength() > 0 && attributes[attributes.GetLength() - 1] == '/';
}

void XmlPoints::begin(Kind kind, const Text& attributes, const WCHAR* name_attribute,
                      const Text& tag)
{
    if (m_kind != Kind::None)
        skip(tr("its end is missing"));
    m_kind = kind;
    m_bad = false;
    m_tag = tag;
    m_name = m_parser.ReadAttrib(attributes, name_attribute);
    m_description = m_parser.ReadAttrib(attributes, ZOR_W("desc"));
    m_northing.reset();
    m_easting.reset();
    m_elevation.reset();
    m_latitude.reset();
    m_longitude.reset();
}

void XmlPoints::skip(const std::string& text)
{
    if (!m_bad) {
        const std::string name = m_name.empty()
                                     ? tr("after point {1}", std::to_string(m_points.size()))
                                     : tr("point {1}", utf8(m_name));
        m_report.skipped(m_file, name, text);
    }
    m_bad = true;
}

void XmlPoints::number(std::optional<double>& target, const Text& value, const char* what)
{
    double number = 0;
    if (parse_number(value, number))
        target = number;
    else
        skip(tr("the {1} is no number: \"{2}\"", tr(what), utf8(value)));
}

// The text of a LandXML point: northing, easting and, perhaps, elevation, divided by blanks.
void XmlPoints::coordinates(Text& value)
{
    zor_formats::StringArray values, numbers;
    value.Replace(static_cast<WCHAR>('\t'), static_cast<WCHAR>(' '));
    m_parser.ParseValuesInBrackets(value, values, static_cast<WCHAR>(' '));
    for (const Text& item : values) {
        if (!item.empty())
            numbers.Add(item);
    }
    if (numbers.GetSize() < 2 || numbers.GetSize() > 3) {
        skip(tr("two or three numbers are needed: \"{1}\"", utf8(value)));
        return;
    }
    number(m_northing, numbers[0], key("northing"));
    number(m_easting, numbers[1], key("easting"));
    if (numbers.GetSize() == 3)
        number(m_elevation, numbers[2], key("elevation"));
}

void XmlPoints::finish()
{
    if (!m_bad && m_name.empty())
        skip(tr("it has no name"));
    const bool grid = m_northing && m_easting, geographic = m_latitude && m_longitude;
    if (!m_bad && !grid && !geographic)
        skip(tr("its coordinates are missing"));
    if (!m_bad && grid)
        m_points.add({*m_northing, *m_easting, m_elevation}, m_name, m_description);
    else if (!m_bad)
        m_points.add({*m_latitude, *m_longitude, m_elevation, true}, m_name, m_description);
    m_kind = Kind::None;
    m_bad = false;
}

void XmlPoints::token(const Text& tag, const Text& attributes, Text& value)
{
    // A text comes with the tag in front of it, and without attributes.
    const bool is_text = attributes.empty() && !value.empty();
    if (is_text && m_kind == Kind::LandXml && is(tag, m_tag.c_str())) {
        coordinates(value);
        finish();
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Name"))) {
        m_name = value;
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Desc"))) {
        m_description = value;
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Northing"))) {
        number(m_northing, value, key("northing"));
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Easting"))) {
        number(m_easting, value, key("easting"));
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Latitude"))) {
        number(m_latitude, value, key("latitude"));
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Longitude"))) {
        number(m_longitude, value, key("longitude"));
    } else if (is_text && m_kind == Kind::Job && is(tag, ZOR_W("Ellipsoidal"))) {
        number(m_elevation, value, key("elevation"));
    } else if (is_text || closes_itself(attributes)) {
        return; // a text of no point, or a reference to one
    } else if (is(tag, ZOR_W("CgPoint"))) {
        begin(Kind::LandXml, attributes, ZOR_W("name"), tag);
    } else if (is(tag, ZOR_W("P"))) {
        begin(Kind::LandXml, attributes, ZOR_W("id"), tag);
    } else if (is(tag, ZOR_W("Point"))) {
        begin(Kind::Job, attributes, ZOR_W("name"), tag);
    } else if (m_kind != Kind::None && tag[0] == '/' && is(tag.Mid(1), m_tag.c_str())) {
        finish();
    }
    // The value may have been gathered into the token of its start tag.
    if (!is_text && !value.empty() && m_kind == Kind::LandXml) {
        coordinates(value);
        finish();
    }
}

void XmlPoints::end()
{
    if (m_kind != Kind::None)
        skip(tr("the file ends inside it"));
}

} // namespace

void read_xml(const Text& file, PointSet& points, Report& report, Progress& progress)
{
    CXmlParser* opened = nullptr;
    switch (CXmlParser::Initialize(resolved(file), opened)) {
    case CXmlParserBase::RESULT_CANNOT_OPEN:
        report.failed(file, tr("cannot be opened"));
        return;
    case CXmlParserBase::RESULT_NOT_XML:
        report.failed(file, tr("is no survey file: its first line does not say \"xml\""));
        return;
    case CXmlParserBase::RESULT_OK:
        break;
    }
    const std::unique_ptr<CXmlParser> parser(opened);
    const size_t before = points.size();
    const size_t skipped = report.skipped_count();
    XmlPoints reader(file, *parser, points, report);
    Text tag, attributes, value;
    while (parser->ReadToken(tag, attributes, value)) {
        reader.token(tag, attributes, value);
        progress.point(points.size());
    }
    reader.end();
    if (points.size() == before && report.skipped_count() == skipped)
        report.failed(file, tr("is no survey file: it holds no CgPoint, P or Point"));
}

} // namespace survey_road
