// The translators' tool, run as they run it.
#include "tests/road/road.h"

using namespace zor_test;

namespace {

typedef std::basic_string<WCHAR> Units;

class XlateCheck : public Road
{
protected:
    Wide write(const std::string& name, const std::string& text)
    {
        return folder.write(name, "\xFF\xFE" + utf16(Units(text.begin(), text.end())));
    }
    Result check(const std::string& arguments) { return run(arguments, ZOR_W("xlate_check")); }
    // The problems of a file with this text: what stands behind its name, a line each.
    std::string problems(const std::string& text)
    {
        write("t.txt", text);
        const Result result = check("@t.txt");
        EXPECT_EQ(result.code, result.err.empty() ? 0 : 1) << text;
        return told(result.err);
    }
    static std::string told(const std::string& err)
    {
        std::string text;
        for (size_t at = 0; (at = err.find("t.txt:", at)) != std::string::npos;) {
            const size_t end = err.find('\n', at);
            text += err.substr(at + 6, end - at - 5);
            at = end;
        }
        return text;
    }
};

} // namespace

TEST_F(XlateCheck, AGoodFileIsCounted)
{
    write("t.txt", "; a comment\r\n[Save@@Menu]\r\n[Speichern]\r\n[a[b]\\n%s]\r\n[%s [x]]\r\n");
    const Result result = check("@t.txt");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("t.txt: 2 pairs, 0 problems\n"), std::string::npos) << result.out;
}

TEST_F(XlateCheck, ProblemsAreToldWithLineAndColumn)
{
    const struct
    {
        const char *text, *problems;
    } cases[] = {
        {"[a][x]\r\n[b][y", "2:4: this \"[\" has no \"]\": all behind it is lost\n"
                            "2:2: this key has no translation behind it\n"},
        {"[a][x]\n [b[c][y]\n", "2:2: this \"[\" has no \"]\": all behind it is lost\n"},
        {"[a] ] [x]", "1:5: this \"]\" has no \"[\"\n"},
        {"[a][x] ]", "1:8: this \"]\" has no \"[\"\n"},
        {"[a][x]\r[", "2:1: this \"[\" has nothing behind it\n"},
        {"[a][x]\n\n[b]", "3:2: this key has no translation behind it\n"},
        {"[a][x]\r\n[a][y]", "2:2: the key \"a\" stands already in line 1\n"},
        {"[][x]", "1:2: the key is empty: the pair does not count\n"},
        {"[a][]", "1:5: the translation is empty: the pair does not count (\"a\")\n"},
        {"[a\nb][x]", "1:2: the key holds a line end; spell it \\r or \\n\n"},
        {"[a][x\r\ny]", "1:5: the translation holds a line end; spell it \\r or \\n (\"a\")\n"},
        {"[a@@m][x@@m]", "1:8: the translation has a context, which users will see\n"},
        {"[a %d][x]", "1:8: places to fill differ: the key has \"%d\", the translation \"\"\n"},
        {"[%s %d][%d %s]",
         "1:9: places to fill differ: the key has \"%s %d\", the translation \"%d %s\"\n"},
        {"[{1} {2}][{2} {1}]", ""},
        {"[{1} {2}][{2}]",
         "1:11: places to fill differ: the key has \"{1} {2}\", the translation \"{2}\"\n"},
        {"[%1!d! %2][%2 %1!d!]", ""},
        {"[%1!d!][%1!s!]",
         "1:9: places to fill differ: the key has \"%1!d!\", the translation \"%1!s!\"\n"},
        {"[100%% {{1}][100 %% von {{x}]", ""},
        {"[50 % of][50 % von]", ""},
        {"[%-10.3lf][%lf]",
         "1:12: places to fill differ: the key has \"%-10.3lf\", the translation \"%lf\"\n"},
        {"[a ][x]", "1:6: blanks at the ends differ from those of the key \"a \"\n"},
        {"[ a ][ x ]", ""},
    };
    for (const auto& row : cases) {
        std::string expected = row.problems;
        // Told in the order of their places.
        if (expected.find("2:4") == 0)
            expected = "2:2: this key has no translation behind it\n"
                       "2:4: this \"[\" has no \"]\": all behind it is lost\n";
        EXPECT_EQ(problems(row.text), expected) << row.text;
    }
}

TEST_F(XlateCheck, ColumnsCountCharacters)
{
    // A letter of two units in front, and the mark of the file, which is no column.
    folder.write("t.txt", "\xFF\xFE" + utf16(Units{0xD83D, 0xDCCD, ' ', ']'}));
    EXPECT_EQ(told(check("@t.txt").err), "1:3: this \"]\" has no \"[\"\n");
}

TEST_F(XlateCheck, KeysAreComparedWithAnotherFile)
{
    write("t.txt", "[a][x]\n[b][y]");
    write("other.txt", "[b][1]\n[c][2]");
    const Result result = check("--against @other.txt @t.txt");
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find("t.txt:1:1: lacks the key \"c\" of "), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("t.txt:1:2: the key \"a\" is not in "), std::string::npos)
        << result.err;
    EXPECT_EQ(check("--against @t.txt @t.txt").code, 0);
}

TEST_F(XlateCheck, FilesThatCannotBeUsed)
{
    folder.write("bytes.txt", "[a][x] in bytes");
    folder.write("big.txt", std::string("\xFE\xFF\0[\0a\0]\0[\0x\0]", 14));
    folder.write("utf8.txt", "\xEF\xBB\xBF[a][x]");
    folder.write("empty.txt", "");
    write("good.txt", "[a][x]");
    for (const char* name : {"bytes.txt", "big.txt", "utf8.txt"}) {
        const Result result = check(std::string("@") + name);
        EXPECT_EQ(result.code, 2) << name;
        EXPECT_NE(result.err.find("is not UTF-16, little-endian"), std::string::npos) << name;
    }
    EXPECT_NE(check("@empty.txt").err.find("is empty"), std::string::npos);
    EXPECT_NE(check("@missing.txt").err.find("cannot be opened"), std::string::npos);
    EXPECT_EQ(check("@missing.txt @good.txt").code, 2) << "the worst counts";
    EXPECT_NE(check("@missing.txt @good.txt").out.find("1 pairs"), std::string::npos);
    EXPECT_EQ(check("--against @missing.txt @good.txt").code, 2);
    folder.write("odd.txt", "\xFF\xFE" + utf16(Units{'[', 'a', ']', '[', 'x', ']'}) + "x");
    EXPECT_EQ(check("@odd.txt").code, 1);
}

TEST_F(XlateCheck, UsageAndLongFiles)
{
    EXPECT_EQ(check("").code, 3);
    EXPECT_EQ(check("--unknown").code, 3);
    EXPECT_EQ(check("--help").code, 0);
    EXPECT_EQ(check("--help").out.find("usage: xlate_check"), 0u);
    EXPECT_EQ(problems("[" + std::string(65536, 'k') + "][x]"),
              "1:2: the key has more than 65,535 units\n");
    std::string many;
    for (int i = 0; i < 20000; ++i)
        many += "[key " + std::to_string(i) + "][value " + std::to_string(i) + "]\r\n";
    EXPECT_EQ(problems(many), "");
}
