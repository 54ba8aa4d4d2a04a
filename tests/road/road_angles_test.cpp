// The host program's bearings, geographic points and columns.
#include "tests/road/road.h"

using namespace zor_test;

namespace {

class RoadAngles : public Road
{
protected:
    // A file of 16-bit units, the same in every code page.
    void write_units(const std::string& name, const std::basic_string<WCHAR>& text)
    {
        folder.write(name, "\xFF\xFE" + utf16(text));
    }

    // What is said of `text` as the only file, without the file's path.
    std::string complaint(const std::basic_string<WCHAR>& text)
    {
        write_units("bad.txt", text);
        const Result result = run("--check @bad.txt");
        EXPECT_EQ(result.code, 2);
        const size_t name = result.err.find("bad.txt:");
        return name == std::string::npos ? result.err
                                         : result.err.substr(name, result.err.find('\n') - name);
    }
};

// The part of an output from a heading to the next empty line.
std::string table(const std::string& out, const std::string& heading)
{
    const size_t start = out.find(heading);
    if (start == std::string::npos)
        return "none in:\n" + out;
    return out.substr(start, out.find("\n\n", start) + 1 - start);
}

const std::string all_quarters = "A,100,100\nB,200,200\nC,100,300\nD,0,200\nE,100,100\n"
                                 "F,200,100\nG,200,200\nH,100,200\nI,100,100\nJ,100,100\n";

} // namespace

TEST_F(RoadAngles, BearingsHaveTheirQuadrantAndTheAxesTheEarlierOne)
{
    folder.write("a.txt", all_quarters);
    const Result result = run("@a.txt --bearings --precision 2");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(table(result.out, "From"), "From  To  Distance        Bearing\n"
                                         "A     B     141.42  N 45\xC2\xB0"
                                         "00'00\" E\n"
                                         "B     C     141.42  S 45\xC2\xB0"
                                         "00'00\" E\n"
                                         "C     D     141.42  S 45\xC2\xB0"
                                         "00'00\" W\n"
                                         "D     E     141.42  N 45\xC2\xB0"
                                         "00'00\" W\n"
                                         "E     F     100.00   N 0\xC2\xB0"
                                         "00'00\" E\n"
                                         "F     G     100.00  N 90\xC2\xB0"
                                         "00'00\" E\n"
                                         "G     H     100.00   S 0\xC2\xB0"
                                         "00'00\" E\n"
                                         "H     I     100.00  S 90\xC2\xB0"
                                         "00'00\" W\n"
                                         "I     J       0.00              -\n");
}

TEST_F(RoadAngles, BearingsNeverShowSixtySeconds)
{
    // The arc tangent of these is a whisker below 30 degrees.
    folder.write("a.txt", "A,0,0\nB,1732050.80756888,999999.99999\n");
    for (const char* precision : {"0", "2", "4", "9"}) {
        const Result result = run(std::string("@a.txt --bearings --precision ") + precision);
        EXPECT_EQ(result.out.find("60\""), std::string::npos) << result.out;
        EXPECT_EQ(result.out.find("60."), std::string::npos) << result.out;
    }
    EXPECT_NE(run("@a.txt --bearings")
                  .out.find("N 30\xC2\xB0"
                            "00'00.0\" E"),
              std::string::npos);
}

TEST_F(RoadAngles, OnePointHasNoLeg)
{
    folder.write("a.txt", "A,1,2,3\n");
    const Result result = run("@a.txt --bearings");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.out.find("one point has no leg\n"), std::string::npos) << result.out;
    EXPECT_EQ(run("@a.txt --bearings --check").out.find("leg"), std::string::npos);
}

TEST_F(RoadAngles, GeographicPointsAreReadInEverySpelling)
{
    write_units("g.txt", ZOR_W("name;lat;lon;h;d\r\n"
                               "A;50\u00B005'12.5\"N;14\u00B025'30\"E;200.5;castle\r\n"
                               "B;50 05 12.5 N;14 25 30 E\r\n"
                               "C;50.05125 n;14.2530e\r\n"
                               "D;50-05-12.5N;14/25/30E\r\n"
                               "E;50\u00B05.2083333333'N;14.425\u00B0E\r\n"
                               "F;50\u00B005'12,5\";14\u00B025'30\"\r\n"
                               "G;5.3S;7W\r\n"
                               "H;-5\u00B030';-7\u00B0\r\n"
                               "I;90N;180W\r\n"));
    const Result result = run("@g.txt --precision 0");
    EXPECT_EQ(result.code, 0) << result.err;
    const std::string d = "\xC2\xB0";
    const std::string prague =
        " 50" + d + "05'12.50\" N   14" + d + "25'30.00\" E  50.086806    14.425000";
    const std::string south =
        "  5" + d + "30'00.00\" S    7" + d + "00'00.00\" W  -5.500000    -7.000000";
    EXPECT_EQ(table(result.out, "Name"),
              "Name        Latitude        Longitude  Degrees N    Degrees E  Elevation  "
              "Description\n" +
                  ("A    " + prague + "        201  castle\n") + ("B    " + prague + "\n") +
                  ("C    " + prague + "\n") + ("D    " + prague + "\n") +
                  ("E    " + prague + "\n") + ("F    " + prague + "\n") + ("G    " + south + "\n") +
                  ("H    " + south + "\n") + "I     90" + d + "00'00.00\" N  180" + d +
                  "00'00.00\" W  90.000000  -180.000000\n");
    EXPECT_NE(result.out.find("9 of them geographic\n"), std::string::npos) << result.out;
}

TEST_F(RoadAngles, GeographicPointsGoThroughAJob)
{
    write_units("g.txt",
                ZOR_W("A;50\u00B005'12.3456\"N;14 25 30 E;200.5;castle\r\nB;1;2;3;grid\r\n"));
    const Result first = run("@g.txt --precision 5 --out @job.xml");
    EXPECT_EQ(first.code, 0) << first.err;
    const Result again = run("@job.xml --precision 5");
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(again.out, first.out);
}

TEST_F(RoadAngles, BadAnglesAreToldWithFileLineAndText)
{
    struct Case
    {
        const WCHAR* line;
        const char* complaint;
    };
    const Case cases[] = {
        {ZOR_W("A;95N;1E"), "bad.txt:2: the latitude is beyond 90 degrees: \"95N\""},
        {ZOR_W("A;1N;180.0001E"), "bad.txt:2: the longitude is beyond 180 degrees: \"180.0001E\""},
        {ZOR_W("A;50N;1N"), "bad.txt:2: the longitude ends in a letter other than E or W: \"1N\""},
        {ZOR_W("A;50E;1W"), "bad.txt:2: the latitude ends in a letter other than N or S: \"50E\""},
        {ZOR_W("A;-5N;1E"), "bad.txt:2: the latitude has a minus and a letter: \"-5N\""},
        {ZOR_W("A;50x30N;1E"), "bad.txt:2: the latitude is no angle: \"50x30N\""},
        {ZOR_W("A;x50N;1E"), "bad.txt:2: the latitude is no angle: \"x50N\""},
        {ZOR_W("A;50N;12'30E"), "bad.txt:2: the longitude is no angle: \"12'30E\""},
        {ZOR_W("A;50N;abc"),
         "bad.txt:2: the longitude ends in a letter other than E or W: \"abc\""},
        {ZOR_W("A;50N;;5"), "bad.txt:2: the longitude is no angle: \"\""},
        {ZOR_W("A;1e;2"), "bad.txt:2: the northing is no number: \"1e\""},
        {ZOR_W(";50N;6E"), "bad.txt:2: the name is empty"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(
            complaint(std::basic_string<WCHAR>(ZOR_W("# angles\r\n")) + row.line + ZOR_W("\r\n")),
            row.complaint);
}

TEST_F(RoadAngles, LegsOfGeographicPointsAreCounted)
{
    folder.write("a.txt", "A;1;1\nB;2;1\nC;5N;6E\nD;3;1\n");
    const Result result = run("@a.txt --bearings --precision 0");
    EXPECT_EQ(table(result.out, "From"), "From  To  Distance       Bearing\n"
                                         "A     B          1  N 0\xC2\xB0"
                                         "00'00\" E\n"
                                         "2 legs from or to geographic points have no grid "
                                         "bearing\n");
}

TEST_F(RoadAngles, ColumnsAreToldByTheirHeading)
{
    folder.write("a.csv", "Z,Point,E,N,Code,When\n1.5,A1,2,3,x,2013-10-01\n,A2,5,6,,2013-10-02\n");
    const Result result = run("--columns @a.csv");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out.substr(result.out.find("2 lines")),
              "2 lines, divided by commas, with a heading\n"
              "Column  Heading  Kind     Values           Looks like\n"
              "     1  Z        real     1 real, 1 empty  elevation: its heading says so\n"
              "     2  Point    text     2 text           name: its heading says so\n"
              "     3  E        integer  2 integer        easting: its heading says so\n"
              "     4  N        integer  2 integer        northing: its heading says so\n"
              "     5  Code     text     1 text, 1 empty  description: its heading says so\n"
              "     6  When     date     2 date\n");
}

TEST_F(RoadAngles, ColumnsWithoutAHeadingAreToldByTheirValues)
{
    folder.write("a.txt", "x\t1\t10.5\t20\t3\t2013-10-01 08:29:35\t-\n"
                          "x\t2\t11\t21\t4\t2013-10-01 24:59:59\t5.\n"
                          "y\t3\t10.5\t22\t\t2013-10-02 00:00:00\t1e5\n");
    const Result result = run("--columns @a.txt");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(
        result.out.substr(result.out.find("3 lines")),
        "3 lines, divided by tabs\n"
        "Column  Heading  Kind           Values                     Looks like\n"
        "     1           text           3 text\n"
        "     2           integer        3 integer                  name: every line has one, and "
        "none stands twice\n"
        "     3           real           1 integer, 2 real          northing: first column of "
        "numbers behind the name, 10.5 to 11\n"
        "     4           integer        3 integer                  easting: second column of "
        "numbers behind the name, 20 to 22\n"
        "     5           integer        2 integer, 1 empty         elevation: third column of "
        "numbers behind the name, 3 to 4\n"
        "     6           date and time  3 date and time\n"
        "     7           text           1 integer, 1 real, 1 text\n");
}

TEST_F(RoadAngles, ColumnsOfAnglesAreTold)
{
    folder.write("a.txt", "A;5N;6E\nB;7S;8W\n");
    const Result result = run("--columns @a.txt");
    EXPECT_NE(result.out.find("northing: first column of angles behind the name"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("text (angles)"), std::string::npos) << result.out;
}

TEST_F(RoadAngles, ColumnsOfNothingAreTold)
{
    folder.write("empty.txt", "\n\n");
    folder.write("a.txt", "A,1,2\n");
    EXPECT_EQ(run("--columns @empty.txt").code, 2);
    EXPECT_EQ(run("--columns @missing.txt").code, 2);
    const Result both = run("--columns @missing.txt @a.txt");
    EXPECT_EQ(both.code, 1);
    EXPECT_NE(both.err.find("missing.txt: cannot be opened"), std::string::npos) << both.err;
}
