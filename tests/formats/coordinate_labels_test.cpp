// One coordinate as a small XML fragment.
#include "zorutils/formats/coordinate_labels.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"
#include "zorutils/xml/xml_parser.h"

using zor_test::Wide;

namespace {

// Records which question was asked.
class Parts : public ICoordInfo
{
public:
    Parts(bool horizontal, bool height) : m_horizontal(horizontal), m_height(height) {}

    bool hasHorizontal() const override
    {
        asked += 'P';
        return m_horizontal;
    }
    bool hasHeight() const override
    {
        asked += 'H';
        return m_height;
    }

    mutable std::string asked;

private:
    bool m_horizontal, m_height;
};

struct Indent : CXmlParserBase
{
    static int count() { return m_nOpenTags; }
    static void set(int count) { m_nOpenTags = count; }
};

std::string ascii(const Wide& text)
{
    return std::string(text.c_str(), text.c_str() + text.GetLength());
}

std::string lat_lon(const ICoordInfo& info, const WCHAR* name, int precision)
{
    return ascii(formLatLonCoordinates(info, 50.0755, -14.4378, 235.125, name, precision));
}

std::string north_east(const ICoordInfo& info, const WCHAR* name, int precision)
{
    return ascii(formNECoordinates(info, 5478123.4, -3412.75, 235.125, name, precision));
}

} // namespace

TEST(CoordinateLabels, GeodeticCoordinates)
{
    EXPECT_EQ(lat_lon(Parts(true, true), ZOR_W("Point"), 3),
              "<Point>\r\n"
              "\t<FullWGS>\r\n"
              "\t\t<Lat>50.076</Lat>\r\n"
              "\t\t<Lon>-14.438</Lon>\r\n"
              "\t\t<Ellipsoidal>235.125</Ellipsoidal>\r\n"
              "\t</FullWGS>\r\n"
              "</Point>\r\n");
    EXPECT_EQ(lat_lon(Parts(true, false), ZOR_W("Point"), 1), "<Point>\r\n"
                                                              "\t<LatLon>\r\n"
                                                              "\t\t<Lat>50.1</Lat>\r\n"
                                                              "\t\t<Lon>-14.4</Lon>\r\n"
                                                              "\t</LatLon>\r\n"
                                                              "</Point>\r\n");
    EXPECT_EQ(lat_lon(Parts(false, true), ZOR_W("Point"), 0),
              "<Point>\r\n"
              "\t<Height>\r\n"
              "\t\t<Ellipsoidal>235</Ellipsoidal>\r\n"
              "\t</Height>\r\n"
              "</Point>\r\n");
}

TEST(CoordinateLabels, PlaneCoordinates)
{
    EXPECT_EQ(north_east(Parts(true, true), ZOR_W("P"), 2),
              "<P>\r\n"
              "\t<Full>\r\n"
              "\t\t<Northing>5478123.40</Northing>\r\n"
              "\t\t<Easting>-3412.75</Easting>\r\n"
              "\t\t<Ellipsoidal>235.13</Ellipsoidal>\r\n"
              "\t</Full>\r\n"
              "</P>\r\n");
    EXPECT_EQ(north_east(Parts(true, false), ZOR_W("P"), 1),
              "<P>\r\n"
              "\t<NE>\r\n"
              "\t\t<Northing>5478123.4</Northing>\r\n"
              "\t\t<Easting>-3412.8</Easting>\r\n"
              "\t</NE>\r\n"
              "</P>\r\n");
    EXPECT_EQ(north_east(Parts(false, true), ZOR_W("P"), 1),
              "<P>\r\n"
              "\t<Height>\r\n"
              "\t\t<Ellipsoidal>235.1</Ellipsoidal>\r\n"
              "\t</Height>\r\n"
              "</P>\r\n");
}

TEST(CoordinateLabels, ACoordinateWithNothingIsEmptyAndLeavesTheIndent)
{
    Indent::set(5);
    EXPECT_EQ(lat_lon(Parts(false, false), ZOR_W("Point"), 3), "");
    EXPECT_EQ(north_east(Parts(false, false), ZOR_W("Point"), 3), "");
    EXPECT_EQ(north_east(Parts(false, false), nullptr, 3), "");
    EXPECT_EQ(Indent::count(), 5);
    Indent::set(0);
}

TEST(CoordinateLabels, ANullNameIsRefusedInOneFormAndEmptyInTheOther)
{
    Indent::set(1);
    EXPECT_EQ(lat_lon(Parts(true, true), nullptr, 3), "");
    EXPECT_EQ(Indent::count(), 1);
    EXPECT_EQ(north_east(Parts(false, true), nullptr, 1),
              "\t<>\r\n"
              "\t\t<Height>\r\n"
              "\t\t\t<Ellipsoidal>235.1</Ellipsoidal>\r\n"
              "\t\t</Height>\r\n"
              "\t</>\r\n");
    EXPECT_EQ(Indent::count(), 1);
    Indent::set(0);
}

TEST(CoordinateLabels, TheHeightIsAskedForBeforeThePlaneAtEachChoice)
{
    const Parts full(true, true);
    lat_lon(full, ZOR_W("P"), 1);
    EXPECT_EQ(full.asked, "HHPPH");
    const Parts plane(true, false);
    north_east(plane, ZOR_W("P"), 1);
    EXPECT_EQ(plane.asked, "HPHPPH");
    const Parts nothing(false, false);
    north_east(nothing, ZOR_W("P"), 1);
    EXPECT_EQ(nothing.asked, "HP");
}

TEST(CoordinateLabels, TheVirtualTableHoldsTheTwoQuestionsInOrder)
{
    // The slots themselves, as a host built apart from the library sees them.
    typedef bool (*Question)(const ICoordInfo*);
    const Parts parts(true, false);
    const ICoordInfo* const info = &parts;
    const Question* slots = nullptr;
    memcpy(&slots, static_cast<const void*>(info), sizeof slots);
    EXPECT_TRUE(slots[0](info));
    EXPECT_FALSE(slots[1](info));
    EXPECT_EQ(parts.asked, "PH");
}
