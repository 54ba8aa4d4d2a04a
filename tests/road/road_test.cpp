// The host program, run as a user runs it: what it reads, prints, writes and says.
#include "tests/road/road.h"

using namespace zor_test;

namespace {

const std::string two = "P1,100.5,200.25,10.125,first\nP2,101.5,201.25,11.125,second\n";

} // namespace

TEST_F(Road, PrintsATableASummaryAndTheNextFreeNames)
{
    folder.write("a.txt", two + "A-009,1,2,3,corner\n");
    const Result result = run("@a.txt --precision 2");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Name   Northing  Easting  Elevation  Description\n"
                          "P1       100.50   200.25      10.13  first\n"
                          "P2       101.50   201.25      11.13  second\n"
                          "A-009      1.00     2.00       3.00  corner\n"
                          "\n"
                          "3 points\n"
                          "northing   1.00 to 101.50 (100.50)\n"
                          "easting    2.00 to 201.25 (199.25)\n"
                          "elevation  3.00 to 11.13 (8.13)\n"
                          "series A-: 1 points, next free name A-010\n"
                          "series P: 2 points, next free name P3\n");
}

TEST_F(Road, EachDelimiterIsFound)
{
    for (const char* text : {"P1,1,2,3,d\n", "P1\t1\t2\t3\td\n", "P1;1;2;3;d\n", "P1 1 2 3 d\n",
                             "P1   1 2  3   d\n", "P1;1,0;2,0;3,0;d\n"}) {
        folder.write("a.txt", text);
        const Result result = run("@a.txt --precision 0");
        EXPECT_EQ(result.code, 0) << text;
        EXPECT_NE(result.out.find("P1           1        2          3  d\n"), std::string::npos)
            << text << result.out;
    }
}

TEST_F(Road, ContentAndNotTheNameTellsTheKind)
{
    folder.write("list.xml", two);
    folder.write("land.txt", "<?xml version=\"1.0\"?>\n<LandXML>\n<CgPoints>\n"
                             "<CgPoint name=\"C1\" desc=\"pin\">1.5 2.5 3.5</CgPoint>\n"
                             "<CgPoint pntRef=\"C1\"/>\n"
                             "<CgPoint name=\"C2\">\n 4 5\n</CgPoint>\n</CgPoints>\n"
                             "<P id=\"7\">6 7 8</P>\n</LandXML>\n");
    EXPECT_EQ(points(run("@list.xml --check").out), "2");
    const Result land = run("@land.txt");
    EXPECT_EQ(land.code, 0) << land.err;
    EXPECT_EQ(points(land.out), "3");
    EXPECT_NE(land.out.find("C1       1.500    2.500      3.500  pin\n"), std::string::npos)
        << land.out;
    EXPECT_NE(land.out.find("1 points have no elevation\n"), std::string::npos) << land.out;
}

TEST_F(Road, AJobReadsBackAsTheSamePoints)
{
    folder.write("a.txt",
                 "Name;N;E;Z;D\nP1;100.12345678;-200.5;10;a <b> & 'c' \"d\"\nX Y;1e3;2;;no height\n"
                 "A-001;5538012.345;3459871.22;231.074;\n");
    const Result first = run("@a.txt --precision 8 --out @job.xml");
    EXPECT_EQ(first.code, 0) << first.err;
    const Result again = run("@job.xml --precision 8");
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(again.out, first.out);
    // Written over an old one, and read together with another file.
    EXPECT_EQ(run("@job.xml --out @job.xml").code, 0);
    EXPECT_EQ(points(run("@job.xml @a.txt --check").out), "6");
    EXPECT_FALSE(folder.has("job.xml.new"));
}

TEST_F(Road, ATextThatTheJobCannotCarryIsTold)
{
    folder.write("a.txt", "P1,1,2,3,an &lt; entity\nP2,1,2,3,fine\n");
    const Result result = run("@a.txt --out @job.xml");
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find("point P1 is not in the job"), std::string::npos) << result.err;
    EXPECT_EQ(points(run("@job.xml --check").out), "1");
}

TEST_F(Road, LinesThatCannotBeReadAreNamedAndCounted)
{
    folder.write(
        "a.txt",
        two +
            "\n# a remark\nP3,1\nP4,x,2,3\nP5,1,2,3 m\n,1,2,3\nP6,1-2,2,3\nP7,1e,2,3\nP8,1,2,3\n");
    const Result result = run("@a.txt --check");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(points(result.out), "3");
    for (const char* text :
         {"a.txt:5: too few values", "a.txt:6: the northing is no number: \"x\"",
          "a.txt:7: the elevation is no number: \"3 m\"",
          "a.txt:8: ", "a.txt:9: the northing is no number: \"1-2\"",
          "a.txt:10: the northing is no number: \"1e\"", "6 lines or points skipped"})
        EXPECT_NE(result.err.find(text), std::string::npos) << text << "\n" << result.err;
}

TEST_F(Road, PointsThatCannotBeReadAreNamedInXml)
{
    folder.write(
        "a.xml",
        "<xml>\n<P id=\"1\">1 2 3</P>\n<P id=\"2\">1 x 3</P>\n<P id=\"3\">1</P>\n<P>1 2</P>\n"
        "<P id=\"5\"></P>\n<P id=\"6\">1 2 3\n");
    const Result result = run("@a.xml --check");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(points(result.out), "2");
    for (const char* text :
         {"a.xml: point 2: the easting is no number: \"x\"", "a.xml: point 3: two or three numbers",
          "a.xml: after point 1: it has no name", "a.xml: point 5: its coordinates are missing"})
        EXPECT_NE(result.err.find(text), std::string::npos) << text << "\n" << result.err;
}

TEST_F(Road, FilesThatAreNoSurveyGiveTwo)
{
    std::filesystem::create_directory(folder / "sub");
    folder.write("empty", "");
    folder.write("blank", "\n\n  \n");
    folder.write("junk", std::string("\x01\x02\0\xFF\xFE\x00", 6) + std::string(1000, '\0'));
    folder.write("letter", "Dear all,\nthis is no survey.\n");
    folder.write("html", "<html>\n<body>\n");
    folder.write("a.xml", "<xml>\n<other>\n");
    const struct
    {
        const char *name, *message;
    } rows[] = {
        {"missing", "cannot be opened"}, {"sub", "is a folder"},
        {"empty", "is empty"},           {"blank", "is no survey file"},
        {"junk", "binary data"},         {"letter", "is no survey file"},
        {"html", "is no survey file"},   {"a.xml", "holds no CgPoint"},
    };
    for (const auto& row : rows) {
        const Result result = run(std::string("@") + row.name);
        EXPECT_EQ(result.code, 2) << row.name;
        EXPECT_EQ(result.out, "") << row.name;
        EXPECT_NE(result.err.find(row.message), std::string::npos)
            << row.name << ": " << result.err;
    }
    folder.write("good", two);
    folder.write("a..b", two);
    EXPECT_NE(run("@a..b").err.find("two dots"), std::string::npos);
    EXPECT_EQ(run("@sub/../good --check").code, 0);
    EXPECT_EQ(run("@good @missing").code, 1) << "the other file's points are kept";
}

TEST_F(Road, EncodingsAndEndsOfFiles)
{
    const std::basic_string<WCHAR> wide(two.begin(), two.end());
    folder.write("utf16", "\xFF\xFE" + utf16(wide));
    folder.write("utf8", "\xEF\xBB\xBF" + two);
    folder.write("no-end", two.substr(0, two.size() - 1));
    folder.write("returns", "P1,1,2,3\rP2,1,2,3\r");
    folder.write("crlf", "P1,1,2,3\r\nP2,1,2,3\r\n");
    for (const char* name : {"utf16", "utf8", "no-end", "returns", "crlf"}) {
        const Result result = run(std::string("@") + name);
        EXPECT_EQ(result.code, 0) << name << result.err;
        EXPECT_EQ(points(result.out), "2") << name;
        EXPECT_NE(result.out.find("\nP1 "), std::string::npos) << name << result.out;
    }
    folder.write("return.xml", "<xml>\r<P id=\"1\">1 2 3</P>\r");
    const Result result = run("@return.xml");
    EXPECT_EQ(result.code, 2);
    EXPECT_NE(result.err.find("lone carriage return"), std::string::npos);
}

TEST_F(Road, RepeatedNamesAreToldAndSkippedInTheSeries)
{
    folder.write("a.txt", "P1,1,2,3\nP2,1,2,3\nP1,4,5,6\nP0003,1,2,3\n");
    const Result result = run("@a.txt --check");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("the name P1 stands more than once"), std::string::npos);
    EXPECT_NE(result.out.find("series P: 4 points, next free name P0004\n"), std::string::npos)
        << result.out;
}

TEST_F(Road, HelpVersionTimingAndWrongUse)
{
    folder.write("a.txt", two);
    const Result help = run("--help");
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.out.find("usage: survey_road"), 0u);
    EXPECT_EQ(run("--version").out.find("survey_road "), 0u);
    EXPECT_NE(run("@a.txt --timing").err.find("points per second"), std::string::npos);
    for (const char* wrong : {"", "--unknown @a.txt", "@a.txt --precision", "@a.txt --precision x",
                              "@a.txt --precision 10", "@a.txt --precision -1", "@a.txt --out"}) {
        const Result result = run(wrong);
        EXPECT_EQ(result.code, 3) << wrong;
        EXPECT_NE(result.err.find("survey_road: "), std::string::npos) << wrong;
    }
}

TEST_F(Road, AJobThatCannotBeWrittenGivesTwoAndKeepsTheOldOne)
{
    folder.write("a.txt", two);
    const Result result = run("@a.txt --out @no/job.xml");
    EXPECT_EQ(result.code, 2);
    EXPECT_NE(result.err.find("cannot be written"), std::string::npos);
    EXPECT_EQ(points(result.out), "2");
}

TEST_F(Road, RealSurveysAreReadWhole)
{
    const std::filesystem::path data = std::filesystem::path(ZOR_SHARED_DATA);
    if (!std::filesystem::exists(data / "topo0.asc"))
        GTEST_SKIP() << "the survey files are not beside this checkout";
    EXPECT_EQ(points(run((data / "topo0.asc").string() + " --check").out), "1311");
    EXPECT_EQ(points(run((data / "surface.xml").string() + " --check").out), "1657");
}
