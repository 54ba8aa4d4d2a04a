#include "zorutils/formats/coordinate_labels.h"

#include "zorutils/formats/number_text.h"
#include "zorutils/xml/xml_writer_internal.h"

namespace {

using zor_text::CZorStringT;

constexpr CXmlParserBase::ETagType tag_type = CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES;

struct Words
{
    const WCHAR* full;
    const WCHAR* horizontal;
    const WCHAR* first;
    const WCHAR* second;
};

constexpr Words lat_lon_words = {ZOR_W("FullWGS"), ZOR_W("LatLon"), ZOR_W("Lat"), ZOR_W("Lon")};
constexpr Words north_east_words = {ZOR_W("Full"), ZOR_W("NE"), ZOR_W("Northing"),
                                    ZOR_W("Easting")};

const WCHAR* inner_tag(const ICoordInfo& info, const Words& words)
{
    const bool height = info.hasHeight();
    const bool horizontal = info.hasHorizontal();
    if (height)
        return horizontal ? words.full : ZOR_W("Height");
    return horizontal ? words.horizontal : ZOR_W("");
}

void write_value(CZorStringT<WCHAR>& out, const WCHAR* tag, double value, int precision)
{
    const CXmlInlineTagScope scope(out, tag, tag_type);
    out += zor_formats::DoubleToString(value, precision);
}

bool has_nothing(const ICoordInfo& info)
{
    return !info.hasHeight() && !info.hasHorizontal();
}

CZorStringT<WCHAR> form(const ICoordInfo& info, const Words& words, double first, double second,
                        double height, const WCHAR* name, int precision)
{
    CZorStringT<WCHAR> out;
    {
        const CXmlBlockTagScope outer(out, name, tag_type);
        const CXmlBlockTagScope inner(out, inner_tag(info, words), tag_type);
        if (info.hasHorizontal()) {
            write_value(out, words.first, first, precision);
            write_value(out, words.second, second, precision);
        }
        if (info.hasHeight())
            write_value(out, ZOR_W("Ellipsoidal"), height, precision);
    }
    return out;
}

} // namespace

CZorStringT<WCHAR> formLatLonCoordinates(const ICoordInfo& info, double lat, double lon,
                                         double height, const WCHAR* name, int precision)
{
    if (has_nothing(info) || name == nullptr)
        return CZorStringT<WCHAR>();
    return form(info, lat_lon_words, lat, lon, height, name, precision);
}

CZorStringT<WCHAR> formNECoordinates(const ICoordInfo& info, double northing, double easting,
                                     double height, const WCHAR* name, int precision)
{
    if (has_nothing(info))
        return CZorStringT<WCHAR>();
    return form(info, north_east_words, northing, easting, height, name, precision);
}
