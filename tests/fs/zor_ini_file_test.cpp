#include "zorutils/fs/zor_ini_file.h"

#include <gtest/gtest.h>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace zor_settings;
using namespace zor::text_utils;
using namespace zor_test;

namespace {

// No file that is read in full here ends as this.
constexpr EZorTextEncoding untouched = static_cast<EZorTextEncoding>(3);

class IniFile : public testing::Test
{
protected:
    // What a read gave: "section|key=value" for each pair in the store's order, and the numbers of
    // the checks that failed.
    struct Read
    {
        bool ok;
        std::string pairs, checks;
        EZorTextEncoding encoding;
    };

    Read read(const std::string& bytes)
    {
        const Wide path = folder.write("settings.ini", bytes);
        CThreeTupleStore store;
        store.setValue(ZOR_W("old"), ZOR_W("old"), ZOR_W("old"));
        const DebugCapture log;
        Read result = {false, "", "", untouched};
        result.ok = readSettingsAsIni(path.c_str(), store, result.encoding);
        result.pairs = pairs_of(store);
        for (const std::u16string& text : log.texts()) {
            const size_t at = text.find(u"DBGCHK  fs\\zor_ini_file @ ");
            if (at != std::u16string::npos)
                for (const char16_t c : text.substr(at + 26, 3))
                    result.checks += static_cast<char>(c);
        }
        return result;
    }

    static std::string pairs_of(const CThreeTupleStore& store)
    {
        std::string text;
        for (const auto& section : store.sections())
            for (const auto& [key, value] : section.second.m_entries)
                text += shown(section.second.m_name) + "|" + shown(key) + "=" + shown(value) + "\n";
        return text;
    }

    static std::string wide_bytes(const std::string& ascii)
    {
        return utf16(std::basic_string<WCHAR>(ascii.begin(), ascii.end()));
    }

    TempFolder folder;
};

} // namespace

// --- The store.

TEST_F(IniFile, AStoreKeepsSectionsKeysAndValues)
{
    CThreeTupleStore store;
    Wide value(ZOR_W("kept"));
    EXPECT_FALSE(store.getValue(ZOR_W("s"), ZOR_W("k"), value));
    EXPECT_EQ(shown(value), "kept");
    store.setValue(ZOR_W("s"), ZOR_W("k"), ZOR_W("one"));
    store.setValue(ZOR_W("s"), ZOR_W("k"), ZOR_W("two"));
    store.setValue(ZOR_W("s"), ZOR_W("n"), -17);
    EXPECT_TRUE(store.getValue(ZOR_W("s"), ZOR_W("k"), value));
    EXPECT_EQ(shown(value), "two");
    EXPECT_TRUE(store.getValue(ZOR_W("s"), ZOR_W("n"), value));
    EXPECT_EQ(shown(value), "-17");
    EXPECT_FALSE(store.getValue(ZOR_W("s"), ZOR_W("other"), value));
    EXPECT_FALSE(store.getValue(ZOR_W("S"), ZOR_W("k"), value)) << "case counts";
    EXPECT_FALSE(store.getValue(ZOR_W("s"), ZOR_W("K"), value));
    store.clear();
    EXPECT_FALSE(store.getValue(ZOR_W("s"), ZOR_W("k"), value));
}

TEST_F(IniFile, OrderIsThatOfUnsignedUnits)
{
    CThreeTupleStore store;
    for (const WCHAR* key : {ZOR_W("\uFF21"), ZOR_W("b"), ZOR_W("B"), ZOR_W("a"), ZOR_W("aa"),
                             ZOR_W("\u010D"), ZOR_W("\U0001F600"), ZOR_W("")})
        store.setValue(ZOR_W("s"), key, 1);
    EXPECT_EQ(pairs_of(store), "s|=1\ns|B=1\ns|a=1\ns|aa=1\ns|b=1\ns|\\u010D=1\n"
                               "s|\\uD83D\\uDE00=1\ns|\\uFF21=1\n");
}

// --- The grammar.

TEST_F(IniFile, EveryKindOfLine)
{
    struct Row
    {
        const char* bytes;
        bool ok;
        const char* pairs;
        const char* checks;
    };
    const Row rows[] = {
        {"key=value", true, "|key=value\n", ""},
        {"[s]\nkey=value\n", true, "s|key=value\n", ""},
        {"[s]\r\nkey=value\r\n", true, "s|key=value\n", ""},
        {"[s]\rkey=value\r", true, "s|key=value\n", ""},
        {"\r\n\n\r[s]\n\n\n\rkey=value\n\r\n", true, "s|key=value\n", ""},
        {"[s]\na=1\n[t]\na=2\n[s]\nb=3\n", true, "s|a=1\ns|b=3\nt|a=2\n", ""},
        {"a=1\na=2\n", true, "|a=2\n", ""},
        {"[Key]\nKey=1\nkey=2\n[key]\nKey=3\n", true, "Key|Key=1\nKey|key=2\nkey|Key=3\n", ""},
        // Nothing is trimmed or unquoted.
        {"a = b\n", true, "|a = b\n", ""},
        {"a=\"b\" ; c # d [e]=f\n", true, "|a=\"b\" ; c # d [e]=f\n", ""},
        {"a=\n", true, "|a=\n", ""},
        {"a==\n", true, "|a==\n", ""},
        {"a=b \t\n", true, "|a=b \\u0009\n", ""},
        {"1=2\n", true, "|1=2\n", ""},
        // Comments.
        {"# c\n; c\n/ c\n// c\n#\n;\n/\na=1\n", true, "|a=1\n", ""},
        // Sections.
        {"[a]b]\nk=1\n", true, "a]b|k=1\n", ""},
        {"[ a ]\nk=1\n", true, " a |k=1\n", ""},
        {"[a] \t\nk=1\n", true, "a|k=1\n", ""},
        {"[a=b]\nk=1\n", true, "a=b|k=1\n", ""},
        {"[only]\n", true, "", ""},
        {"[]\n", false, "", "221"},
        {"[\n", false, "", "221"},
        {"[a\n", false, "", "221"},
        {"[a]x\n", false, "", "221"},
        {"a=1\n[]\nb=2\n", false, "|a=1\n", "221"},
        // A line of blanks ends the section, on purpose.
        {"[s]\na=1\n \nb=2\n[t]\nc=3\n\t \t\nd=4\n", true, "|b=2\n|d=4\ns|a=1\nt|c=3\n", ""},
        {" a=1\n", false, "", "212"},
        {"\t[s]\n", false, "", "212"},
        {"x=1\n  # c\n", false, "|x=1\n", "212"},
        // Keys.
        {"key\n", false, "", "235"},
        {"a=1\nkey\nb=2\n", false, "|a=1\n", "235"},
        {"=value\n", false, "", "243"},
        {"-a=1\n", false, "", "243"},
        {"_a=1\n", false, "", "243"},
        {".a=1\n", false, "", "243"},
        {"\"a\"=1\n", false, "", "243"},
        {"\x0B"
         "a=1\n",
         false, "", "243"},
        {"\x1F"
         "a=1\n",
         false, "", "243"},
        {"a=1", true, "|a=1\n", ""},
        {"\n", true, "", ""},
        {" ", true, "", ""},
    };
    for (const Row& row : rows) {
        for (const bool wide : {false, true}) {
            SCOPED_TRACE(testing::PrintToString(row.bytes) + (wide ? " wide" : ""));
            const Read result =
                read(wide ? "\xFF\xFE" + wide_bytes(row.bytes) : std::string(row.bytes));
            EXPECT_EQ(result.ok, row.ok);
            EXPECT_EQ(result.pairs, row.pairs);
            EXPECT_EQ(result.checks, row.checks);
        }
    }
}

TEST_F(IniFile, AZeroEndsTheFile)
{
    const Read result = read(std::string("a=1\nb=2\n\0\nc=3\n-bad", 19));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.pairs, "|a=1\n|b=2\n");
    // Within a line the bytes behind it are lost, and the reading goes on with the next line.
    EXPECT_EQ(read(std::string("a=1\0x\nb=2", 9)).pairs, "|a=1\n|b=2\n");
}

TEST_F(IniFile, LettersBeyondAsciiBeginKeys)
{
    EXPECT_EQ(read("\xFF\xFE" + utf16(ZOR_W("\u010Da=1\n\u0663=2\n"))).ok, true);
    EXPECT_EQ(read("\xFF\xFE" + utf16(ZOR_W("\u20ACa=1\n"))).checks, "243");
}

// --- Encodings.

TEST_F(IniFile, TheEncodingIsTold)
{
    EXPECT_EQ(read("key=value\n").encoding, TEXT_ENCODING_ANSI);
    EXPECT_EQ(read("\xFF\xFE" + wide_bytes("key=value\n")).encoding, TEXT_ENCODING_UTF16);
    // Without a mark too, and no character is lost.
    const Read unmarked = read(wide_bytes("[section]\r\nkey=value\r\n"));
    EXPECT_EQ(unmarked.encoding, TEXT_ENCODING_UTF16);
    EXPECT_EQ(unmarked.pairs, "section|key=value\n");
    // Too short to be looked at: bytes.
    EXPECT_EQ(read("a=1").encoding, TEXT_ENCODING_ANSI);
    // UTF-8's mark is passed over, and the rest is bytes.
    const Read utf8 = read("\xEF\xBB\xBF[s]\nkey=value\n");
    EXPECT_EQ(utf8.encoding, TEXT_ENCODING_UNKNOWN);
    EXPECT_EQ(utf8.pairs, "s|key=value\n");
    // An odd byte at the end is no unit.
    EXPECT_EQ(read("\xFF\xFE" + wide_bytes("key=1") + "x").pairs, "|key=1\n");
}

TEST_F(IniFile, NothingIsToldOfAFileThatFails)
{
    const Read bad = read("key=value\n-");
    EXPECT_FALSE(bad.ok);
    EXPECT_EQ(bad.encoding, untouched);
    CThreeTupleStore store;
    store.setValue(ZOR_W("s"), ZOR_W("k"), 1);
    EZorTextEncoding encoding = untouched;
    const DebugCapture log;
    EXPECT_FALSE(readSettingsAsIni(folder.wide("none").c_str(), store, encoding));
    EXPECT_FALSE(readSettingsAsIni(folder.wide().c_str(), store, encoding)) << "a folder";
    EXPECT_FALSE(readSettingsAsIni(folder.write("empty", "").c_str(), store, encoding));
    EXPECT_EQ(pairs_of(store), "s|k=1\n");
    EXPECT_EQ(encoding, untouched);
    EXPECT_EQ(read("").pairs, "old|old=old\n") << "an empty file cannot be mapped";
    EXPECT_EQ(read("\xFF\xFE").pairs, "") << "a mark alone is a file without settings";
    EXPECT_TRUE(read("\xFF\xFE").ok);
    EXPECT_TRUE(read("\xFF\xFE\r\0\n\0").ok);
}

TEST_F(IniFile, BytesAreOfTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    EXPECT_EQ(read("key=\x80\xE9\n").pairs, "|key=\\u20AC\\u00E9\n");
}

// --- Writing.

TEST_F(IniFile, IsWrittenInTheOrderOfTheStore)
{
    CThreeTupleStore store;
    store.setValue(ZOR_W("b"), ZOR_W("y"), ZOR_W(""));
    store.setValue(ZOR_W("b"), ZOR_W("x"), ZOR_W("1 = 2"));
    store.setValue(ZOR_W("a"), ZOR_W("k"), 7);
    const std::string expected = "[a]\r\nk=7\r\n\r\n[b]\r\nx=1 = 2\r\ny=\r\n\r\n";
    for (const auto encoding : {TEXT_ENCODING_ANSI, TEXT_ENCODING_UNKNOWN}) {
        EXPECT_TRUE(writeSettingsAsIni(folder.wide("out").c_str(), store, encoding));
        EXPECT_EQ(folder.read("out"), expected);
    }
    EXPECT_TRUE(writeSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_UTF16));
    EXPECT_EQ(folder.read("out"), wide_bytes(expected)) << "without a mark";
    EXPECT_TRUE(saveSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_EQ(folder.read("out"), expected);
    EXPECT_FALSE(folder.has("out.new"));
    EXPECT_TRUE(
        writeSettingsAsIni(folder.wide("out").c_str(), CThreeTupleStore(), TEXT_ENCODING_ANSI));
    EXPECT_EQ(folder.read("out"), "");
}

TEST_F(IniFile, WhatWasReadIsWrittenBackTheSame)
{
    const std::string text = "[a]\r\nk=7\r\n\r\n[b]\r\nx=1 = 2\r\n\r\n";
    for (const std::string& bytes : {text, wide_bytes(text)}) {
        CThreeTupleStore store;
        EZorTextEncoding encoding;
        ASSERT_TRUE(readSettingsAsIni(folder.write("in", bytes).c_str(), store, encoding));
        ASSERT_TRUE(writeSettingsAsIni(folder.wide("out").c_str(), store, encoding));
        EXPECT_EQ(folder.read("out"), bytes);
    }
}

TEST_F(IniFile, ASectionWithoutANameCannotBeWritten)
{
    CThreeTupleStore store;
    store.setValue(Wide(), ZOR_W("k"), 1);
    store.setValue(ZOR_W("s"), ZOR_W("k"), 1);
    folder.write("out", "old");
    EXPECT_FALSE(writeSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_EQ(folder.read("out"), "[") << "the file ends in front of the name";
    EXPECT_FALSE(writeSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_UTF16));
    EXPECT_EQ(folder.read("out"), std::string("[\0", 2));
    folder.write("out", "old");
    EXPECT_FALSE(saveSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_EQ(folder.read("out"), "old") << "saving keeps the old file";
    EXPECT_FALSE(folder.has("out.new"));
}

TEST_F(IniFile, WhatThePageDoesNotHaveIsLostInBytes)
{
    ZOR_NEEDS_PAGE_1252();
    CThreeTupleStore store;
    store.setValue(ZOR_W("s"), ZOR_W("k"), ZOR_W("\u4E2D\u00E9"));
    EXPECT_TRUE(writeSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_EQ(folder.read("out"), "[s]\r\nk=?\xE9\r\n\r\n");
    EXPECT_TRUE(saveSettingsAsIni(folder.wide("out").c_str(), store, TEXT_ENCODING_ANSI));
}

TEST_F(IniFile, AFileThatCannotBeOpenedIsToldOfWhenWritten)
{
    CThreeTupleStore store;
    store.setValue(ZOR_W("s"), ZOR_W("k"), 1);
    EXPECT_FALSE(writeSettingsAsIni(folder.wide("no/ne").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_FALSE(saveSettingsAsIni(folder.wide("no/ne").c_str(), store, TEXT_ENCODING_ANSI));
    EXPECT_FALSE(writeSettingsAsIni(folder.wide().c_str(), store, TEXT_ENCODING_ANSI));
}

TEST_F(IniFile, TenMegabytesAreReadAndWritten)
{
    std::string text;
    for (int section = 0; text.size() < 10'000'000; ++section) {
        text += "[section" + std::to_string(100000 + section) + "]\r\n";
        for (int key = 0; key < 50; ++key)
            text += "key" + std::to_string(1000 + key) + "=value number " + std::to_string(key) +
                    " of a long list of values\r\n";
        text += "\r\n";
    }
    CThreeTupleStore store;
    EZorTextEncoding encoding;
    ASSERT_TRUE(readSettingsAsIni(folder.write("in", text).c_str(), store, encoding));
    // Byte by byte the system would be asked too often: the writing is by way of pieces.
    ASSERT_TRUE(saveSettingsAsIni(folder.wide("out").c_str(), store, encoding));
    EXPECT_EQ(folder.read("out") == text, true);
}
