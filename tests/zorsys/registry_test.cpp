#include "zorutils/zorsys/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/debug_capture.h"
#include "tests/support/registry.h"

using namespace zor_test;

namespace {

HKEY user()
{
    return reinterpret_cast<HKEY>(static_cast<intptr_t>(static_cast<LONG>(0x80000001u)));
}

const char content[] = R"(; what an application keeps
[HKEY_CURRENT_USER\Software\zorutils-tests]
@="the default"
"Text"="plain"
"Esc \"q\" \\ b"="say \"hi\" C:\\jobs\\"
"Empty"=""
"Expand"=hex(2):25,00,48,00,4f,00,4d,00,45,00,25,00,00,00
"Number"=dword:00650061
"Small"=dword:00000041
"Binary"=hex:61,00,62,00,00,00,63,00
"Odd"=hex:61,00,62
"NotEnded"=hex(1):61,00,62,\
  00
"Inside"=hex(1):61,00,00,00,62,00,00,00
"Multi"=hex(7):61,00,00,00,62,00,00,00,00,00
"None"=hex(0):
"Quad"=hex(b):78,00,79,00,7a,00,00,00
"é"="č→"

[HKEY_CURRENT_USER\Software\zorutils-tests\Sub b]

[HKEY_CURRENT_USER\Software\zorutils-tests\sub A]
"x"="1"

[HKEY_CURRENT_USER\Software\zorutils-tests\Deep\er\est]
"x"="2"
)";

class RegistryReads : public testing::Test
{
protected:
    static Wide path(const char* below)
    {
        return Wide((std::string("Software\\zorutils-tests") + below).c_str());
    }
    typedef bool (*Enumeration)(HKEY, const WCHAR*, zor_vector<Wide>&);
    // The names, sorted: what order they come in is the system's own.
    static std::vector<std::string> names(Enumeration enumeration, const char* below)
    {
        zor_vector<Wide> found;
        found.push_back(Wide("left over"));
        EXPECT_TRUE(enumeration(user(), path(below).c_str(), found));
        std::vector<std::string> names;
        for (const Wide& name : found)
            names.push_back(shown(name));
        std::sort(names.begin(), names.end());
        return names;
    }
    // The text, behind "no: " for a false answer.
    static std::string value(const char* below, const Wide& name)
    {
        Wide value("left over");
        const bool found =
            zor_registry::ReadStringValue(user(), path(below).c_str(), name.c_str(), value);
        return (found ? "" : "no: ") + shown(value);
    }
};

} // namespace

TEST_F(RegistryReads, Values)
{
    const TestRegistry registry(content);
    const struct
    {
        const char *name, *value;
    } cases[] = {
        {"", "the default"},  {"Text", "plain"},
        {"tEXT", "plain"},    {"Esc \"q\" \\ b", "say \"hi\" C:\\jobs\\"},
        {"Empty", ""},        {"Expand", "%HOME%"},
        {"Number", "no: ae"}, {"Small", "no: A"},
        {"Binary", "no: ab"}, {"Odd", "no: ab"},
        {"NotEnded", "ab"},   {"Inside", "a"},
        {"Multi", "no: a"},   {"None", "no: "},
        {"Quad", "no: xyz"},  {"Missing", "no: "},
    };
    for (const auto& row : cases)
        EXPECT_EQ(value("", row.name), row.value) << row.name;
    EXPECT_EQ(value("", Wide(ZOR_W("\u00E9"))), "\\u010D\\u2192");
    EXPECT_EQ(value("", Wide(ZOR_W("\u00C9"))), "\\u010D\\u2192") << "case does not count";
    Wide text;
    EXPECT_TRUE(zor_registry::ReadStringValue(user(), path("").c_str(), nullptr, text));
    EXPECT_EQ(shown(text), "the default");
}

TEST_F(RegistryReads, ValuesOfKeysBelow)
{
    const TestRegistry registry(content);
    EXPECT_EQ(value("\\Sub A", "x"), "1");
    EXPECT_EQ(value("\\deep\\ER\\est", "x"), "2");
    EXPECT_EQ(value("\\Deep\\er", "x"), "no: ");
    EXPECT_EQ(value("\\Deep", ""), "no: ") << "no default value is none";
    EXPECT_EQ(value("\\Missing", "x"), "no: ");
}

TEST_F(RegistryReads, AnEmptyKeyReadsFromTheRootItself)
{
    const TestRegistry registry(content);
    Wide value("left over");
    for (const WCHAR* none : {ZOR_W(""), static_cast<const WCHAR*>(nullptr)}) {
        EXPECT_FALSE(zor_registry::ReadStringValue(user(), none, ZOR_W("Text"), value));
        EXPECT_EQ(shown(value), "");
        EXPECT_FALSE(zor_registry::ReadStringValue(user(), none, ZOR_W("Text"), value))
            << "the root was not closed";
    }
    EXPECT_TRUE(zor_registry::ReadStringValue(user(), path("").c_str(), ZOR_W("Text"), value));
}

TEST_F(RegistryReads, NamesOfValues)
{
    const TestRegistry registry(content);
    EXPECT_EQ(names(zor_registry::EnumEntries, ""),
              (std::vector<std::string>{"", "Binary", "Empty", "Esc \"q\" \\ b", "Expand", "Inside",
                                        "Multi", "None", "NotEnded", "Number", "Odd", "Quad",
                                        "Small", "Text", "\\u00E9"}));
    EXPECT_EQ(names(zor_registry::EnumEntries, "\\Sub b"), std::vector<std::string>())
        << "a key without values";
}

TEST_F(RegistryReads, NamesOfKeys)
{
    const TestRegistry registry(content);
    zor_vector<Wide> found;
    EXPECT_TRUE(zor_registry::EnumSections(user(), path("").c_str(), found));
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(shown(found[0]), "Deep");
    EXPECT_EQ(shown(found[1]), "sub A");
    EXPECT_EQ(shown(found[2]), "Sub b");
    EXPECT_EQ(names(zor_registry::EnumSections, "\\Deep"), std::vector<std::string>{"er"});
    EXPECT_EQ(names(zor_registry::EnumSections, "\\Sub b"), std::vector<std::string>());
}

TEST_F(RegistryReads, AMissingKeyIsFalseAndEmptyAndSilent)
{
    const TestRegistry registry(content);
    const DebugCapture capture;
    zor_vector<Wide> found;
    found.push_back(Wide("left over"));
    EXPECT_FALSE(zor_registry::EnumEntries(user(), path("\\Missing").c_str(), found));
    EXPECT_EQ(found.size(), 0u);
    found.push_back(Wide("left over"));
    EXPECT_FALSE(zor_registry::EnumSections(user(), path("\\Missing").c_str(), found));
    EXPECT_EQ(found.size(), 0u);
    EXPECT_EQ(value("\\Missing", "x"), "no: ");
    EXPECT_TRUE(capture.texts().empty());
}

TEST_F(RegistryReads, ALongNameEndsTheList)
{
    for (const int length : {255, 256, 300}) {
        const std::string name(static_cast<size_t>(length), 'c');
        const TestRegistry registry("[HKEY_CURRENT_USER\\Software\\zorutils-tests]\n\"a\"=\"1\"\n"
                                    "\"b\"=\"2\"\n\"" +
                                    name + "\"=\"3\"\n\"d\"=\"4\"\n");
        const std::vector<std::string> whole = {"a", "b", name, "d"}, cut = {"a", "b"};
        EXPECT_EQ(names(zor_registry::EnumEntries, ""), length < 256 ? whole : cut) << length;
        EXPECT_EQ(value("", name.c_str()), "3") << "it can be read all the same";
    }
}

TEST_F(RegistryReads, LongValuesAreReadWhole)
{
    const std::string text(70000, 'v');
    const TestRegistry registry("[HKEY_CURRENT_USER\\Software\\zorutils-tests]\n\"a\"=\"" + text +
                                "\"\n");
    EXPECT_EQ(value("", "a"), text);
}
