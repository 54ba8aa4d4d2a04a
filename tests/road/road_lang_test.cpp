// The host program's texts in other languages.
#include "tests/road/road.h"
#include "tests/support/own_app.h"

using namespace zor_test;

namespace {

typedef std::basic_string<WCHAR> Units;

class RoadLang : public Road
{
protected:
    RoadLang() : app(ZOR_TEST_SURVEY_ROAD)
    {
        folder.write("a.txt", "P1,1,2,3\nP2,4,5,6\nP3,x,5,6\n");
        file = (folder / "a.txt").string();
        std::filesystem::create_directory(app.folder / "app/lang");
    }
    // A translation of the program's own copy.
    void translate(const std::string& language, const std::string& bytes)
    {
        app.folder.write("app/lang/survey_road." + language + ".txt", bytes);
    }

    OwnApp app;
    std::string file;
};

} // namespace

TEST_F(Road, SpeaksGermanAndCzech)
{
    folder.write("a.txt", "P1,1,2,3\nP2,4,5\nP3,x,5,6\n");
    const Result german = run("--lang de @a.txt");
    EXPECT_EQ(german.code, 1);
    EXPECT_EQ(german.out.find("Name  Hochwert  Rechtswert   H\xC3\xB6he  Beschreibung\n"
                              "P1       1.000       2.000  3.000\n"),
              0u)
        << german.out;
    EXPECT_NE(german.out.find("\n2 Punkte\n"), std::string::npos) << german.out;
    EXPECT_NE(german.out.find("Reihe P: 2 Punkte, n\xC3\xA4"
                              "chster freier Name P3\n"),
              std::string::npos);
    EXPECT_NE(german.err.find("a.txt:3: Hochwert: keine Zahl: \"x\"\n"), std::string::npos)
        << german.err;
    const Result czech = run("@a.txt --lang cs");
    EXPECT_NE(czech.out.find("\n2 bod\xC5\xAF\n"), std::string::npos) << czech.out;
    EXPECT_NE(czech.out.find("v\xC3\xBD\xC5\xA1ka      3.000 a\xC5\xBE 3.000 (0.000)\n"),
              std::string::npos)
        << "columns count letters: " << czech.out;
    EXPECT_EQ(
        run("--lang cs --wrong").err.find("survey_road: nezn\xC3\xA1m\xC3\xA1 volba --wrong\n"),
        0u);
    EXPECT_EQ(
        run("--wrong --lang cs").err.find("survey_road: nezn\xC3\xA1m\xC3\xA1 volba --wrong\n"), 0u)
        << "wherever it stands";
    EXPECT_EQ(run("--lang de --help").out.find("Aufruf: survey_road [Optionen] DATEI...\n\nLiest "),
              0u);
    EXPECT_NE(run("@a.txt --check --lang de --columns").out.find("getrennt durch Kommas"),
              std::string::npos);
}

TEST_F(Road, EnglishIsTheLanguageOfTheTexts)
{
    folder.write("a.txt", "P1,1,2,3\n");
    const Result plain = run("@a.txt");
    const Result english = run("--lang en @a.txt");
    EXPECT_EQ(english.out, plain.out);
    EXPECT_EQ(english.err, "");
    EXPECT_EQ(run("@a.txt --lang").code, 3);
}

TEST_F(Road, AnUnknownLanguageIsToldAndTextsStayEnglish)
{
    folder.write("a.txt", "P1,1,2,3\n");
    for (const char* language : {"xx", "../de", "de.txt"}) {
        const Result result = run(std::string("@a.txt --lang ") + language);
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err,
                  std::string("survey_road: there is no translation for the language \"") +
                      language + "\"\n");
        EXPECT_NE(result.out.find("1 points\n"), std::string::npos);
    }
}

TEST_F(RoadLang, TheSettingsFileChoosesAndTheCommandLineGoesFirst)
{
    const std::string one = "[{1} points][{1} eins]", two = "[{1} points][{1} zwei]";
    translate("one", "\xFF\xFE" + utf16(Units(one.begin(), one.end())));
    translate("two", "\xFF\xFE" + utf16(Units(two.begin(), two.end())));
    app.folder.write("user/survey_road.ini", "[Preferences]\r\nLanguage=one\r\nPrecision=11\r\n");
    EXPECT_NE(app.run(file).find("\n2 eins\n"), std::string::npos);
    EXPECT_NE(app.err.find("Precision is a whole number"), std::string::npos) << "not translated";
    EXPECT_NE(app.run("--lang two " + file).find("\n2 zwei\n"), std::string::npos);
    EXPECT_NE(app.run("--lang en " + file).find("\n2 points\n"), std::string::npos);
}

TEST_F(RoadLang, BadTranslationsLeaveEnglish)
{
    const auto utf = [](const std::string& text) { return utf16(Units(text.begin(), text.end())); };
    const std::string english = app.run(file);
    EXPECT_NE(english.find("\n2 points\n"), std::string::npos);
    const std::string bad[] = {
        "",
        "[",
        "[{1} points][{1} Punkte]", // bytes, and no units
        std::string("\x01\x02\xFF\x00[\x00\x07", 7),
        utf("no groups at all"),
        utf("[{1} points][]"),
        utf("[{1} points][{1} Punkte"),
        utf("[{1} points][{2} Punkte]"), // a field that is none
        utf("[{1} points][{x} Punkte]"),
        utf("[Name]"),
    };
    for (const std::string& bytes : bad) {
        translate("xx", bytes);
        EXPECT_EQ(app.run("--lang xx " + file), english) << bytes;
        EXPECT_NE(app.err.find("a.txt:3: the northing is no number: \"x\""), std::string::npos);
    }
    // What stands in front of the end of a broken file is used, and the log tells.
    translate("xx", utf("[{1} points][{1} Punkte][Name][Na"));
    EXPECT_NE(app.run("--lang xx " + file).find("\n2 Punkte\n"), std::string::npos);
    bool logged = false;
    for (const auto& entry : std::filesystem::directory_iterator(app.folder / "user")) {
        const std::string bytes = app.folder.read("user/" + entry.path().filename().string());
        logged |=
            bytes.find(utf("DBGCHK No matching ']' in Help.map\n zortext\\xlateTable @ 104")) !=
            std::string::npos;
    }
    EXPECT_TRUE(logged);
}
