// The host program's preferences and its log.
#include <gtest/gtest.h>

#include "tests/support/own_app.h"
#include "tests/support/text.h"

using namespace zor_test;

namespace {

class RoadLog : public testing::Test
{
protected:
    RoadLog() : app(ZOR_TEST_SURVEY_ROAD)
    {
        app.folder.write("a.txt", "P1;1,5;2;3\nP2;2,5;x;3\n");
        file = (app.folder / "a.txt").string();
    }
    void prefer(const std::string& lines)
    {
        app.folder.write("user/survey_road.ini", "[Preferences]\r\n" + lines);
    }
    std::string log(int number)
    {
        const std::string bytes =
            app.folder.read("user/survey_road" + std::to_string(number) + ".log.txt");
        std::string text;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2)
            text += bytes[i + 1] == 0 ? bytes[i] : '?';
        return text;
    }

    OwnApp app;
    std::string file;
};

} // namespace

TEST_F(RoadLog, TellsWhereTheLogIs)
{
    EXPECT_EQ(app.run("--log"),
              "log: " + OwnApp::native(app.folder / "user") + "\\survey_road1.log.txt\n");
    EXPECT_EQ(app.code, 0);
}

TEST_F(RoadLog, HoldsWhatWasReadSkippedAndWritten)
{
    const std::string out = app.run("--out " + (app.folder / "job.xml").string() + " " + file);
    EXPECT_NE(out.find("1 points\n"), std::string::npos) << out << app.err;
    const std::string text = log(1);
    for (const char* part : {"Program ", "a.txt:2: the easting is no number: \"x\"\r\n",
                             " ; 7 ; 1 points read from 1 files, 1 lines or points skipped\r\n",
                             " ; 7 ; job written: ", " ; 7 ; Logging finished\r\n"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
}

TEST_F(RoadLog, PreferencesAreTakenUnlessTheCommandLineSaysElse)
{
    prefer("Precision=1\r\nDelimiter=semicolon\r\nLanguage=cs\r\n");
    EXPECT_NE(app.run(file).find("P1         1.5      2.0        3.0\n"), std::string::npos);
    EXPECT_EQ(log(1).find("language: cs") != std::string::npos, true);
    EXPECT_NE(app.run("--precision 2 " + file).find("P1        1.50     2.00       3.00\n"),
              std::string::npos);
    // Another delimiter makes other values of the same lines.
    prefer("Delimiter=tab\r\n");
    app.run(file);
    EXPECT_NE(app.err.find("too few values"), std::string::npos) << app.err;
}

TEST_F(RoadLog, BadPreferencesAreToldAndLeftOut)
{
    prefer("Precision=17\r\nDelimiter=dash\r\n");
    const std::string out = app.run(file);
    EXPECT_NE(out.find("P1       1.500    2.000      3.000\n"), std::string::npos) << out;
    EXPECT_NE(app.err.find("survey_road.ini: Precision is a whole number from 0 to 9\n"),
              std::string::npos)
        << app.err;
    EXPECT_NE(app.err.find("Delimiter is comma, semicolon, tab or blank\n"), std::string::npos);
    prefer("Precision=1\r\n-broken\r\nDelimiter=comma\r\n");
    EXPECT_NE(app.run(file).find("P1         1.5      2.0        3.0\n"), std::string::npos);
    EXPECT_NE(app.err.find("a line is no setting"), std::string::npos) << app.err;
}
