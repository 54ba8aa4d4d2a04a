// The registry's text form, and what of it is refused.
#include "zorutils/platform/posix/registry_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/platform/posix/failing_calls.h"
#include "tests/support/registry.h"
#include "zorutils/platform/posix/registry.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/registry.h"

using namespace zor_test;
using zor::platform::parse_registry;

namespace {

const std::string first_line = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::string key_line = "[HKEY_LOCAL_MACHINE\\K]\r\n";

// What the file gives for the value "v" of the key K: its type and bytes; "broken", "no key" or
// "no value".
std::string parsed(const std::string& bytes)
{
    const auto registry = parse_registry(bytes);
    if (registry == nullptr)
        return "broken";
    const auto* const key = registry->roots[2].find(u"k");
    if (key == nullptr)
        return "no key";
    const auto* const value = key->find_value(u"V");
    if (value == nullptr)
        return "no value";
    std::string text = std::to_string(value->type) + ":";
    for (const BYTE byte : value->data) {
        char hex[3];
        snprintf(hex, sizeof hex, "%02x", byte);
        text += hex;
    }
    return text;
}

class RegistryFile : public testing::Test
{
protected:
    ~RegistryFile() override { unsetenv("ZOR_REGISTRY"); }

    void use(const std::string& bytes)
    {
        folder.write("r.reg", bytes);
        setenv("ZOR_REGISTRY", (folder / "r.reg").c_str(), 1);
    }
    // The text of the value "v", behind "no: " for a false answer.
    static std::string text_of_v()
    {
        Wide value("left over");
        const bool found =
            zor_registry::ReadStringValue(HKEY_LOCAL_MACHINE, ZOR_W("K"), ZOR_W("v"), value);
        return (found ? "" : "no: ") + shown(value);
    }
    static std::string with_v(const std::string& text)
    {
        return first_line + key_line + "\"v\"=\"" + text + "\"\r\n";
    }

    TempFolder folder;
};

} // namespace

TEST_F(RegistryFile, Values)
{
    const struct
    {
        const char *line, *value;
    } cases[] = {
        {"\"v\"=\"ab\"", "1:610062000000"},
        {"\"v\"=\"\"", "1:0000"},
        {"\"v\" = \"a\" ", "1:61000000"},
        {"\"v\"=\"\\\\\\\"\"", "1:5c0022000000"},
        {"\"v\"=\"a\r\nb\"", "1:61000d000a0062000000"},
        {"\"v\"=\"a;b]\"", "1:61003b0062005d000000"},
        {"\"v\"=dword:0000000a", "4:0a000000"},
        {"\"v\"=dword:DEADBEEF", "4:efbeadde"},
        {"\"v\"=dword:7", "4:07000000"},
        {"\"v\"=hex:", "3:"},
        {"\"v\"=hex:0,ff", "3:00ff"},
        {"\"v\"=hex:01,02,\\\r\n  03,\\\r\n  04", "3:01020304"},
        {"\"v\"=hex: 01 , 02", "3:0102"},
        {"\"v\"=hex(2):41,00,00,00", "2:41000000"},
        {"\"v\"=hex(7):41,00,00,00,00,00", "7:410000000000"},
        {"\"v\"=hex(b):01,00,00,00,00,00,00,00", "11:0100000000000000"},
        {"\"v\"=hex(0):", "0:"},
        {"\"v\"=hex(ffff0009):01", "4294901769:01"},
        {"\"v\"=\"1\"\r\n\"V\"=\"2\"", "1:32000000"},
        {"\"v\"=\"1\"\r\n\"v\"=-", "no value"},
        {"\"w\"=-", "no value"},
        {"@=\"x\"", "no value"},
        {"; \"v\"=\"1\"", "no value"},
        {"  \"v\"=\"1\"\r\n  ; the end", "1:31000000"},
        {"\"v\"=\"1\"\r\n[-HKEY_LOCAL_MACHINE\\K]\r\n\"v\"=\"2\"", "no key"},
        {"\"v\"=\"1\"\r\n[-HKEY_LOCAL_MACHINE\\K\\none]", "1:31000000"},
        {"[hkey_local_machine\\k]\r\n\"v\"=\"2\"", "1:32000000"},
        {"[HKEY_LOCAL_MACHINE\\a]b]\r\n\"v\"=\"2\"", "no value"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(parsed(first_line + key_line + row.line), row.value) << row.line;
        EXPECT_EQ(parsed(first_line + key_line + row.line + "\r\n"), row.value) << row.line;
    }
}

TEST_F(RegistryFile, LineEndsOfEveryKind)
{
    for (const char* const end : {"\r\n", "\n", "\r"}) {
        const std::string e = end;
        EXPECT_EQ(parsed("Windows Registry Editor Version 5.00" + e + e +
                         "[HKEY_LOCAL_MACHINE\\K]" + e + e + "\"v\"=hex:01,\\" + e + "  02" + e),
                  "3:0102");
    }
}

TEST_F(RegistryFile, NothingOfABrokenFileIsTaken)
{
    const char* const broken[] = {
        "\"v\"",
        "\"v\"=",
        "\"v\"=\"a",
        "\"v\"=\"a\\",
        "\"v\"=\"a\\x\"",
        "\"v\"=\"a\" b",
        "\"v\"=a",
        "v=\"a\"",
        "\"v=\"a\"",
        "\"v\"=dword:",
        "\"v\"=dword:x",
        "\"v\"=dword:123456789",
        "\"v\"=hex",
        "\"v\"=hex:0g",
        "\"v\"=hex:012",
        "\"v\"=hex:01,",
        "\"v\"=hex:01,\\",
        "\"v\"=hex:01,\\\r\n",
        "\"v\"=hex:01 02",
        "\"v\"=hex(:01",
        "\"v\"=hex():01",
        "\"v\"=hex(123456789):01",
        "[HKEY_LOCAL_MACHINE\\K",
        "[HKEY_LOCAL_MACHINE\\K] x",
        "[HKEY_NOWHERE\\K]",
        "[HKEY_LOCAL_MACHINE\\a\\\\b]",
        "[HKEY_LOCAL_MACHINE\\\\b]",
        "[]",
        "words",
    };
    for (const char* const line : broken) {
        EXPECT_EQ(parsed(first_line + key_line + "\"v\"=\"1\"\r\n" + line), "broken") << line;
    }
    EXPECT_EQ(parsed(first_line + "\"v\"=\"1\""), "broken") << "a value in front of every key";
    EXPECT_EQ(parsed(""), "broken");
    EXPECT_EQ(parsed("REGEDIT4\r\n" + key_line), "broken") << "another version";
    EXPECT_EQ(parsed("Windows Registry Editor Version 5.001\r\n" + key_line), "broken");
    EXPECT_EQ(parsed(first_line), "no key");
    EXPECT_EQ(parsed("Windows Registry Editor Version 5.00"), "no key");
}

TEST_F(RegistryFile, Encodings)
{
    const Wide text(wide_of("[HKEY_LOCAL_MACHINE\\K]\n\"v\"=\"\xC4\x8D\"\n"));
    EXPECT_EQ(parsed(export_file(text)), "1:0d010000");
    EXPECT_EQ(parsed(export_file(text) + "\n"), "broken") << "half a unit at the end";
    EXPECT_EQ(parsed(first_line + key_line + "\"v\"=\"\xC4\x8D\""), "1:0d010000");
    EXPECT_EQ(parsed("\xEF\xBB\xBF" + first_line + key_line + "\"v\"=\"\xC4\x8D\""), "1:0d010000");
    EXPECT_EQ(parsed(first_line + key_line + "\"v\"=\"\xE9\""), "broken") << "no UTF-8";
    std::string swapped = export_file(text);
    for (size_t i = 0; i + 1 < swapped.size(); i += 2)
        std::swap(swapped[i], swapped[i + 1]);
    EXPECT_EQ(parsed(swapped), "broken") << "big-endian";
}

TEST_F(RegistryFile, EveryTruncationOfAUtf16FileIsWholeOrRefused)
{
    const std::string whole = export_file("[HKEY_LOCAL_MACHINE\\K]\n\"v\"=\"text\"\n\"w\"=hex:01,"
                                          "02,\\\n  03\n\"x\"=dword:00000001\n");
    for (size_t size = 0; size <= whole.size(); ++size) {
        const std::string result = parsed(whole.substr(0, size));
        EXPECT_TRUE(result == "broken" || result == "no key" || result == "no value" ||
                    result == "1:74006500780074000000")
            << size << result;
    }
}

TEST_F(RegistryFile, NamesStayAsTheyWereFirstWritten)
{
    const auto registry =
        parse_registry(first_line + "[HKEY_CURRENT_USER\\b]\r\n[HKEY_CURRENT_USER\\A\\C]\r\n"
                                    "[HKEY_CURRENT_USER\\B]\r\n\"y\"=\"\"\r\n\"X\"=\"\"\r\n");
    ASSERT_NE(registry, nullptr);
    std::string keys, values;
    for (const auto& [capitals, key] : registry->roots[1].keys)
        keys += shown(key.name.c_str()) + " ";
    for (const auto& value : registry->roots[1].find(u"B")->values)
        values += shown(value.name.c_str()) + " ";
    EXPECT_EQ(keys, "A b ") << "sorted without regard to case";
    EXPECT_EQ(values, "y X ") << "in the order of the file";
}

TEST_F(RegistryFile, IsReadAgainWhenItChanged)
{
    EXPECT_EQ(text_of_v(), "no: ") << "no file is named";
    use(with_v("one"));
    EXPECT_EQ(text_of_v(), "one");
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, ZOR_W("K"), 0, KEY_READ, &key), 0);
    use(with_v("another"));
    EXPECT_EQ(text_of_v(), "another");
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("v"), nullptr, nullptr, nullptr, &size), 0);
    EXPECT_EQ(size, 8u) << "an open key keeps what it showed";
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegQueryValueExW(key, ZOR_W("v"), nullptr, nullptr, nullptr, &size),
              ERROR_INVALID_HANDLE);
    setenv("ZOR_REGISTRY", (folder / "missing").c_str(), 1);
    EXPECT_EQ(text_of_v(), "no: ");
    setenv("ZOR_REGISTRY", folder.path().c_str(), 1);
    EXPECT_EQ(text_of_v(), "no: ") << "a folder";
}

TEST_F(RegistryFile, ABrokenFileIsAClearNo)
{
    use(with_v("one") + "words\r\n");
    EXPECT_EQ(text_of_v(), "no: ");
    zor_vector<Wide> names;
    EXPECT_FALSE(zor_registry::EnumEntries(HKEY_LOCAL_MACHINE, ZOR_W("K"), names));
    EXPECT_FALSE(zor_registry::EnumSections(HKEY_LOCAL_MACHINE, nullptr, names));
    EXPECT_EQ(names.size(), 0u);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, ZOR_W("K"), 0, KEY_READ, &key), ERROR_BADDB);
    use(with_v("two"));
    EXPECT_EQ(text_of_v(), "two") << "repaired";
}

TEST_F(RegistryFile, ALongKeyNameEndsTheList)
{
    const std::string name(256, 'c');
    use(first_line + "[HKEY_LOCAL_MACHINE\\a]\r\n[HKEY_LOCAL_MACHINE\\" + name +
        "]\r\n[HKEY_LOCAL_MACHINE\\d]\r\n");
    zor_vector<Wide> names;
    EXPECT_TRUE(zor_registry::EnumSections(HKEY_LOCAL_MACHINE, nullptr, names));
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(shown(names[0]), "a");
}

TEST_F(RegistryFile, FailedReadsAreNoValues)
{
    int failures = 0;
    for (int number = 1; number < 20; ++number) {
        use(with_v("number " + std::to_string(number)));
        const int descriptors = open_descriptors();
        std::string text;
        bool failed = false;
        {
            FailingCalls failing(number, EIO);
            text = text_of_v();
            failed = failing.failed() && failing.name() != "close";
        }
        EXPECT_EQ(open_descriptors(), descriptors) << number;
        EXPECT_EQ(text, failed ? "no: " : "number " + std::to_string(number)) << number;
        failures += failed;
        EXPECT_EQ(text_of_v(), "number " + std::to_string(number)) << "and then it is there";
    }
    EXPECT_GE(failures, 3) << "opening, asking, reading";
}
