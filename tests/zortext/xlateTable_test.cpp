#include "zorutils/zortext/xlateTable.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"

using namespace zor_test;

struct CXlateTableProbe
{
    static bool test(const CXlateTable& table) { return table.Test(); }
    static size_t capacity(const CXlateTable& table) { return table.m_entries.capacity(); }
    static bool loaded(const CXlateTable& table) { return table.m_loaded; }
    static bool reload(CXlateTable& table, const WCHAR* path)
    {
        return table.loadTranslationFile(path);
    }
    static std::vector<std::string> keys(const CXlateTable& table)
    {
        std::vector<std::string> keys;
        for (const CXlateEntry& entry : table.m_entries)
            keys.push_back(shown(entry.key, entry.keyLength));
        return keys;
    }
};

namespace {

typedef std::basic_string<WCHAR> Units;

const char unmatched[] = "DBGCHK No matching ']' in Help.map\n zortext\\xlateTable @ 104";

class XlateTable : public testing::Test
{
protected:
    // What a file of these units translates `text` to.
    std::string translated(const Units& content, const Units& text)
    {
        const CXlateTable table(folder.write("t.txt", utf16(content)).c_str());
        EXPECT_TRUE(CXlateTableProbe::test(table));
        return shown(table.Xlate(text.c_str()));
    }
    std::string translated(const char* content, const char* text)
    {
        return translated(Units(content, content + strlen(content)),
                          Units(text, text + strlen(text)));
    }
    // How many reports of a group without an end a file gives, and how many keys.
    std::pair<int, size_t> loaded(const std::string& bytes)
    {
        const Wide path = folder.write("t.txt", bytes);
        const DebugCapture capture;
        const CXlateTable table(path.c_str());
        EXPECT_EQ(CXlateTableProbe::loaded(table), !CXlateTableProbe::keys(table).empty());
        const std::u16string record(unmatched, unmatched + sizeof unmatched - 1);
        return {records(capture, record), CXlateTableProbe::keys(table).size()};
    }
    std::pair<int, size_t> loaded(const char* content)
    {
        return loaded(utf16(Units(content, content + strlen(content))));
    }

    TempFolder folder;
};

} // namespace

TEST_F(XlateTable, TranslatesAKey)
{
    EXPECT_EQ(translated("[Save][Speichern]", "Save"), "Speichern");
    EXPECT_EQ(translated("[Save][Speichern]", "save"), "save") << "case counts";
    EXPECT_EQ(translated("[Save][Speichern]", "Sav"), "Sav");
    EXPECT_EQ(translated("[Save][Speichern]", "Saved"), "Saved");
    EXPECT_EQ(translated("[Save][Speichern]", ""), "");
    EXPECT_EQ(translated("[Save][Speichern][Open][Auf]", "Open"), "Auf");
}

TEST_F(XlateTable, Grammar)
{
    const struct
    {
        const char *content, *key, *value;
    } cases[] = {
        {"[a[b]c][x]", "a[b]c", "x"},
        {"[a][x[y[z]]]", "a", "x[y[z]]"},
        {"[[a]][x]", "[a]", "x"},
        {"; a comment\r\n[a] = [x] ; more\r\n\r\n[b]\r\n[y]", "a", "x"},
        {"; a comment\r\n[a] = [x] ; more\r\n\r\n[b]\r\n[y]", "b", "y"},
        {"] a stray one ] [a][x]", "a", "x"},
        {"[a] [x] [b", "a", "x"},
        {"[a][x][b][", "a", "x"},
        {"[a][x][b]", "a", "x"},
        {"[][lost][a][x]", "a", "x"},
        {"[lost][][a][x]", "a", "x"},
        {"[][][a][x]", "a", "x"},
        {"[\\[a][x]][y]", "\\[a][x]", "y"}, // nothing escapes a bracket
        {"[ a ][ x ]", " a ", " x "},
        {"[a\nb][x]", "a\nb", "a\nb"}, // a real line end in a key is never found
        {"[a\r\n][x]", "a", "a"},
        {"[a][x\ny]", "a", "x\ny"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(translated(row.content, row.key), shown(Wide(row.value))) << row.content;
}

TEST_F(XlateTable, AnEmptySideDropsThePair)
{
    EXPECT_EQ(translated("[Save][]", "Save"), "Save");
    EXPECT_EQ(loaded("[Save][]"), std::make_pair(0, size_t{0}));
    EXPECT_EQ(loaded("[][Speichern]"), std::make_pair(0, size_t{0}));
    EXPECT_EQ(loaded("[Save][][a][x]"), std::make_pair(0, size_t{1}));
}

TEST_F(XlateTable, ContextsBelongToTheKey)
{
    EXPECT_EQ(translated("[Save][Speichern]", "Save@@Menu"), "Save") << "not tried without it";
    EXPECT_EQ(translated("[Save@@Menu][Sichern]", "Save@@Menu"), "Sichern");
    EXPECT_EQ(translated("[Save@@Menu][Sichern]", "Save"), "Save");
    EXPECT_EQ(translated("[Save@@Menu][Sichern]", "Save@@Box"), "Save");
    EXPECT_EQ(translated("[Save@@Menu][Sichern@@Menu]", "Save@@Menu"), "Sichern@@Menu")
        << "a translation is given as it stands";
}

TEST_F(XlateTable, RemoveContext)
{
    const struct
    {
        const char *text, *rest;
    } cases[] = {
        {"Open@@Menu", "Open"},
        {"a@@b@c", "a@@b@c"},
        {"x@@", "x"},
        {"@@x", ""},
        {"@@", ""},
        {"@", "@"},
        {"a@b", "a@b"},
        {"a", "a"},
        {"", ""},
        {"a@@b@@c", "a@@b"},
        {"a@@@b", "a@"},
        {"a@@@", "a@"},
        {"@x", "@x"},
        {"a@ @b", "a@ @b"},
        {"mail@@host", "mail"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(shown(CXlateTable::RemoveContext(Wide(row.text).c_str())), row.rest) << row.text;
    EXPECT_EQ(shown(CXlateTable::RemoveContext(nullptr)), "");
}

TEST_F(XlateTable, LineEndsAreSpelledInTheFile)
{
    EXPECT_EQ(translated("[Line1\\nLine2][Zeile1\\nZeile2]", "Line1\nLine2"),
              "Zeile1\\u000AZeile2");
    EXPECT_EQ(translated("[a\\r\\nb][x\\r\\ny]", "a\r\nb"), "x\\u000D\\u000Ay");
    EXPECT_EQ(translated("[a\\nb][x]", "a\\nb"), "x") << "the spelling itself is found too";
    EXPECT_EQ(translated("[a][x\\\\n]", "a"), "x\\\\u000A") << "no escape for the spelling";
    EXPECT_EQ(translated("[b][x]", "a\nb@@c"), "a\\u000Ab") << "a miss keeps real line ends";
}

TEST_F(XlateTable, KeysThatBeginEachOtherAreBothFound)
{
    const char content[] = "[ab][1][abc][2][a][3][abcd][4][b][5][ac][6]";
    EXPECT_EQ(translated(content, "ab"), "1");
    EXPECT_EQ(translated(content, "abc"), "2");
    EXPECT_EQ(translated(content, "a"), "3");
    EXPECT_EQ(translated(content, "abcd"), "4");
    EXPECT_EQ(translated(content, "ac"), "6");
    EXPECT_EQ(translated(content, "abcde"), "abcde");
    EXPECT_EQ(translated(content, "abx"), "abx");
    const CXlateTable table(folder.wide("t.txt").c_str());
    EXPECT_EQ(CXlateTableProbe::keys(table),
              (std::vector<std::string>{"abcd", "abc", "ab", "ac", "a", "b"}))
        << "the longer of two stands first";
}

TEST_F(XlateTable, UnitsAreComparedUnsigned)
{
    const Units high = {0xFFFE, 0xD800}, low = {0x7FFF}, accent = {0x00E9};
    const Units open = {'['}, close = {']'};
    const auto pair = [&](const Units& key, const char* value) {
        return open + key + close + open + Units(value, value + strlen(value)) + close;
    };
    const Units content = pair(high, "1") + pair(low, "2") + pair(accent, "3") +
                          pair(Units{'z'}, "4") + pair(Units{0x8000}, "5");
    EXPECT_EQ(translated(content, high), "1");
    EXPECT_EQ(translated(content, low), "2");
    EXPECT_EQ(translated(content, accent), "3");
    EXPECT_EQ(translated(content, Units{0x8000}), "5");
    const CXlateTable table(folder.wide("t.txt").c_str());
    EXPECT_EQ(CXlateTableProbe::keys(table),
              (std::vector<std::string>{"z", "\\u00E9", "\\u7FFF", "\\u8000", "\\uFFFE\\uD800"}));
}

TEST_F(XlateTable, ComparisonStopsAtAZeroUnit)
{
    // Such a key is looked up by what stands in front of the zero, and by its whole length.
    const Units content = {'[', 'a', 0,   'b', ']', '[', 'x', ']',
                           '[', 'a', 'c', 'c', ']', '[', 'y', ']'};
    EXPECT_EQ(translated(content, Units{'a', 'c', 'c'}), "y");
    EXPECT_EQ(translated(content, Units{'a'}), "a");
    EXPECT_EQ(translated(Units{'[', 'a', ']', '[', 'x', 0, 'y', ']'}, Units{'a'}), "x\\u0000y");
}

TEST_F(XlateTable, OfEqualKeysOneIsFound)
{
    const std::string found = translated("[a][1][b][2][a][3]", "a");
    EXPECT_TRUE(found == "1" || found == "3") << found;
    EXPECT_EQ(translated("[a][1][b][2][a][3]", "b"), "2");
}

TEST_F(XlateTable, ANullTextIsReportedAndEmpty)
{
    const CXlateTable table(
        folder.write("t.txt", utf16(Units{'[', 'a', ']', '[', 'b', ']'})).c_str());
    const DebugCapture capture;
    EXPECT_EQ(shown(table.Xlate(nullptr)), "");
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateTable @ 144"), 1);
    const CXlateTable empty(folder.wide("missing").c_str());
    EXPECT_EQ(shown(empty.Xlate(nullptr)), "");
    EXPECT_EQ(records(capture, u"DBGCHK  zortext\\xlateTable @ 144"), 2);
}

TEST_F(XlateTable, AFileThatEndsInAGroupKeepsWhatIsInFront)
{
    EXPECT_EQ(loaded("[a][x][b][y"), std::make_pair(1, size_t{1}));
    EXPECT_EQ(loaded("[a][x][b"), std::make_pair(1, size_t{1}));
    EXPECT_EQ(loaded("[a[b]"), std::make_pair(1, size_t{0}));
    EXPECT_EQ(loaded("[a][x][b[c][y][d][z]"), std::make_pair(1, size_t{1})) << "all behind is lost";
    EXPECT_EQ(loaded("[a][x][b]"), std::make_pair(0, size_t{1})) << "no second group: no report";
    EXPECT_EQ(loaded("[a][x]["), std::make_pair(0, size_t{1})) << "a lone bracket at the end";
    EXPECT_EQ(loaded("["), std::make_pair(0, size_t{0}));
    EXPECT_EQ(loaded("[a"), std::make_pair(1, size_t{0}));
    EXPECT_EQ(loaded("[["), std::make_pair(1, size_t{0}));
    EXPECT_EQ(loaded("no groups ] at all"), std::make_pair(0, size_t{0}));
}

TEST_F(XlateTable, EveryTruncationKeepsWholePairs)
{
    const std::string whole = utf16([] {
        const char text[] = "; n\r\n[a[1]][x][b][y[2]] [c][z]";
        return Units(text, text + sizeof text - 1);
    }());
    for (size_t size = 0; size <= whole.size(); ++size) {
        const auto [reports, keys] = loaded(whole.substr(0, size));
        EXPECT_LE(reports, 1) << size;
        const size_t units = size / 2; // an odd last byte does not count
        const size_t expected = units >= 30 ? 3 : units >= 23 ? 2 : units >= 14 ? 1 : 0;
        EXPECT_EQ(keys, expected) << size;
    }
}

TEST_F(XlateTable, BadFilesTranslateNothing)
{
    const CXlateTable missing(folder.wide("missing.txt").c_str());
    EXPECT_FALSE(CXlateTableProbe::loaded(missing));
    EXPECT_TRUE(CXlateTableProbe::test(missing)) << "an empty table passes its test";
    EXPECT_EQ(shown(missing.Xlate(ZOR_W("Open@@Menu"))), "Open");
    EXPECT_EQ(shown(missing.Xlate(ZOR_W("Open"))), "Open");
    EXPECT_EQ(loaded(std::string()), std::make_pair(0, size_t{0}));
    EXPECT_EQ(loaded(std::string("[")), std::make_pair(0, size_t{0})) << "one byte";
    const CXlateTable a_folder(folder.wide().c_str());
    EXPECT_FALSE(CXlateTableProbe::loaded(a_folder));
}

TEST_F(XlateTable, RandomFilesDoNoHarm)
{
    std::mt19937 random(5);
    const WCHAR units[] = {'[', ']', 'a', 'b', 0, 0xFFFF, '@', '\\'};
    for (int round = 0; round < 300; ++round) {
        Units content(random() % 60, 0);
        for (WCHAR& unit : content)
            unit = units[random() % 8];
        std::string bytes = utf16(content);
        if (round % 3 == 0)
            bytes += '[';
        const CXlateTable table(folder.write("r.txt", bytes).c_str());
        EXPECT_TRUE(CXlateTableProbe::test(table));
        EXPECT_EQ(shown(table.Xlate(ZOR_W("not in it@@x"))), "not in it");
    }
}

TEST_F(XlateTable, LengthsAreTakenIn16Bits)
{
    const Units long_key(65537, 'k'), limit(65535, 'l');
    const Units content =
        Units{'['} + long_key + Units{']', '[', '1', ']', '['} + limit + Units{']', '[', '2', ']'};
    EXPECT_EQ(translated(content, long_key), "1");
    EXPECT_EQ(translated(content, Units{'k'}), "1") << "a key of 65,537 units is one of 1";
    EXPECT_EQ(translated(content, limit), "2");
    const std::string value =
        translated(Units{'[', 'a', ']', '['} + long_key + Units{']'}, Units{'a'});
    EXPECT_EQ(value, "k");
}

TEST_F(XlateTable, HundredThousandPairsAreAllFound)
{
    constexpr int count = 100000;
    std::string bytes;
    std::vector<std::string> keys;
    std::mt19937 random(7);
    for (int i = 0; i < count; ++i) {
        std::string key = "key " + std::to_string(i);
        if (i % 3 == 0)
            key = key.substr(0, 4 + random() % 3) + "/" + std::to_string(i) + "@@menu";
        keys.push_back(key);
        const std::string pair = "[" + key + "][value of " + std::to_string(i) + "]\r\n";
        bytes += utf16(Units(pair.begin(), pair.end()));
    }
    const CXlateTable table(folder.write("large.txt", bytes).c_str());
    EXPECT_TRUE(CXlateTableProbe::test(table));
    int found = 0;
    for (int i = 0; i < count; ++i) {
        const Wide value = table.Xlate(Wide(keys[static_cast<size_t>(i)].c_str()).c_str());
        found += shown(value) == "value of " + std::to_string(i);
    }
    EXPECT_EQ(found, count);
}

TEST_F(XlateTable, StorageIsReservedOnceAndKept)
{
    CXlateTable table(folder.write("t.txt", utf16(Units{'[', 'a', ']', '[', 'b', ']'})).c_str());
    EXPECT_GE(CXlateTableProbe::capacity(table), 16384u);
    EXPECT_FALSE(CXlateTableProbe::reload(table, folder.wide("missing").c_str()));
    EXPECT_FALSE(CXlateTableProbe::loaded(table));
    EXPECT_TRUE(CXlateTableProbe::keys(table).empty());
    EXPECT_GE(CXlateTableProbe::capacity(table), 16384u);
    EXPECT_EQ(shown(table.Xlate(ZOR_W("a"))), "a");
    EXPECT_TRUE(CXlateTableProbe::reload(table, folder.wide("t.txt").c_str()));
    EXPECT_EQ(shown(table.Xlate(ZOR_W("a"))), "b");
}
