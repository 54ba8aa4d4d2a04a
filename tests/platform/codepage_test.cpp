// The contract of the code page conversions: results, outputs and last errors.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/winapi.h"

namespace {

// A sum over all of a page's units or bytes, which changes with any single answer.
class Sum
{
public:
    void add(unsigned value)
    {
        for (int shift = 0; shift < 32; shift += 8)
            m_sum = (m_sum ^ ((value >> shift) & 0xFF)) * 16777619u;
    }
    unsigned value() const { return m_sum; }

private:
    unsigned m_sum = 2166136261u;
};

std::string narrow(UINT page, const std::basic_string<WCHAR>& text)
{
    std::vector<char> bytes(text.size() * 4 + 1);
    const int count =
        WideCharToMultiByte(page, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    return std::string(bytes.data(), static_cast<size_t>(count));
}

std::basic_string<WCHAR> wide(UINT page, const std::string& text)
{
    std::vector<WCHAR> units(text.size() + 1);
    const int count = MultiByteToWideChar(page, 0, text.data(), static_cast<int>(text.size()),
                                          units.data(), static_cast<int>(units.size()));
    return std::basic_string<WCHAR>(units.data(), static_cast<size_t>(count));
}

} // namespace

TEST(CodePage, DefaultIsWesternEurope)
{
    if (getenv("ZOR_ACP") != nullptr)
        GTEST_SKIP() << "the environment sets another page";
    EXPECT_EQ(GetACP(), 1252u);
}

TEST(CodePage, EveryUnitAndEveryByteOfEachPageIsAsOnWindows)
{
    const struct
    {
        UINT page;
        unsigned units, bytes, pairs;
    } rows[] = {
        {437, 0x9E2466E0u, 0xA77295EDu, 0x811C9DC5u},
        {874, 0x0EFF9182u, 0x4F8E65D1u, 0x811C9DC5u},
        {1250, 0x01CC2C9Eu, 0xC43F5D20u, 0x811C9DC5u},
        {1251, 0x1D1629E1u, 0xE6A9ED87u, 0x811C9DC5u},
        {1252, 0xFE830321u, 0xD77010E0u, 0x811C9DC5u},
        {1253, 0x5A3089B1u, 0xBC665821u, 0x811C9DC5u},
        {1254, 0xE73B0913u, 0x34D37ECAu, 0x811C9DC5u},
        {1255, 0x433BE72Eu, 0xE6989234u, 0x811C9DC5u},
        {1256, 0x184A55F7u, 0xF75C5BE0u, 0x811C9DC5u},
        {1257, 0x7B22F108u, 0x0FED6A98u, 0x811C9DC5u},
        {1258, 0x10088154u, 0x3197098Au, 0x811C9DC5u},
        {932, 0xFE610CF0u, 0x6A4C5940u, 0x11DCCE50u},
        {936, 0x00C07984u, 0x87224C48u, 0xF9B4CF3Du},
        {949, 0x546FFB97u, 0x9EFA5B8Au, 0xD855B8C6u},
        {950, 0x6871D34Du, 0xEB846CC5u, 0xDC97BF2Au},
    };
    for (const auto& row : rows) {
        Sum units, bytes, pairs;
        for (unsigned unit = 0; unit < 65536; ++unit) {
            const WCHAR text = static_cast<WCHAR>(unit);
            unsigned char out[8] = {};
            const int count = WideCharToMultiByte(
                row.page, 0, &text, 1, reinterpret_cast<char*>(out), 8, nullptr, nullptr);
            units.add(static_cast<unsigned>(count) << 16 | static_cast<unsigned>(out[0]) << 8 |
                      out[1]);
        }
        for (unsigned value = 0; value < 256; ++value) {
            const char text = static_cast<char>(value);
            WCHAR out[4] = {};
            const int count = MultiByteToWideChar(row.page, 0, &text, 1, out, 4);
            const unsigned lead = IsDBCSLeadByteEx(row.page, static_cast<BYTE>(value)) ? 1 : 0;
            bytes.add(static_cast<unsigned>(count) << 24 | lead << 20 |
                      static_cast<unsigned>(out[0]));
            for (unsigned trail = 0; lead != 0 && trail < 256; ++trail) {
                const char pair[] = {static_cast<char>(value), static_cast<char>(trail)};
                WCHAR pair_out[4] = {};
                const int pair_count = MultiByteToWideChar(row.page, 0, pair, 2, pair_out, 4);
                pairs.add(static_cast<unsigned>(pair_count) << 24 |
                          static_cast<unsigned>(pair_out[0]));
                pairs.add(static_cast<unsigned>(pair_out[1]));
            }
        }
        EXPECT_EQ(units.value(), row.units) << row.page;
        EXPECT_EQ(bytes.value(), row.bytes) << row.page;
        EXPECT_EQ(pairs.value(), row.pairs) << row.page;
    }
}

TEST(CodePage, BestFitsAndDefaults)
{
    EXPECT_EQ(narrow(1252, {0x20AC, 0x0160, 0x0100, 0x2212, 0x4E2D}), "\x80\x8A"
                                                                      "A-?");
    EXPECT_EQ(narrow(1250, {0x0159, 0x00E3, 0x0141}), "\xF8"
                                                      "a\xA3");
    EXPECT_EQ(narrow(932, {0x6E2C, 0x91CF, 'A', 0xFF71, 0x00E9}), "\x91\xAA\x97\xCA"
                                                                  "A\xB1"
                                                                  "e");
    EXPECT_EQ(wide(932, "\x91\xAA"
                        "A\xB1"),
              (std::basic_string<WCHAR>{0x6E2C, 'A', 0xFF71}));
    EXPECT_EQ(wide(1252, "\x81\x8D\x8F\x90\x9D"),
              (std::basic_string<WCHAR>{0x81, 0x8D, 0x8F, 0x90, 0x9D}));
}

TEST(CodePage, SurrogatesGiveADefaultEach)
{
    EXPECT_EQ(narrow(1252, {0xD83D, 0xDE00, 'x'}), "??x");
    EXPECT_EQ(narrow(1252, {0xD800}), "?");
}

TEST(CodePage, CallsWithoutABufferCount)
{
    const WCHAR text[] = {'a', 0x6E2C, 0};
    EXPECT_EQ(WideCharToMultiByte(932, 0, text, 2, nullptr, 0, nullptr, nullptr), 3);
    EXPECT_EQ(WideCharToMultiByte(932, 0, text, -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(MultiByteToWideChar(932, 0, "a\x91\xAA", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", 2, nullptr, 0), 2);
}

TEST(CodePage, LengthMinusOneTakesTheTerminator)
{
    WCHAR units[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "ab", -1, units, 8), 3);
    EXPECT_EQ(units[2], 0);
    EXPECT_EQ(units[3], 1);
    char bytes[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(WideCharToMultiByte(1252, 0, units, -1, bytes, 8, nullptr, nullptr), 3);
    EXPECT_EQ(bytes[2], 0);
    EXPECT_EQ(bytes[3], 1);
}

TEST(CodePage, NullSourceFailsWithoutWriting)
{
    WCHAR unit = 7;
    char out = 7;
    for (int length : {-1, 0, 1}) {
        SetLastError(0);
        EXPECT_EQ(MultiByteToWideChar(1252, 0, nullptr, length, &unit, 1), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
        SetLastError(0);
        EXPECT_EQ(WideCharToMultiByte(1252, 0, nullptr, length, &out, 1, nullptr, nullptr), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    }
    EXPECT_EQ(unit, 7);
    EXPECT_EQ(out, 7);
}

TEST(CodePage, BadCallsAreInvalidParameters)
{
    WCHAR units[4];
    char bytes[4];
    const WCHAR text[] = {'a', 0};
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "a", 0, units, 4), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "a", 1, nullptr, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(54321, 0, "a", 1, units, 4), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(WideCharToMultiByte(1252, 0, text, 0, bytes, 4, nullptr, nullptr), 0);
    EXPECT_EQ(WideCharToMultiByte(54321, 0, text, 1, bytes, 4, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(CodePage, TooSmallABufferIsAnErrorOfItsOwn)
{
    WCHAR units[2];
    char bytes[2];
    const WCHAR text[] = {'a', 'b', 'c', 0};
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", 3, units, 2), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    SetLastError(0);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, text, 3, bytes, 2, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    const WCHAR kanji[] = {'a', 0x6E2C};
    EXPECT_EQ(WideCharToMultiByte(932, 0, kanji, 2, bytes, 2, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST(CodePage, ACallersDefaultCharacterIsUsedAndReported)
{
    const WCHAR text[] = {'a', 0x4E2D, 'b'};
    char bytes[8] = {};
    BOOL used = FALSE;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, text, 3, bytes, 8, "#", &used), 3);
    EXPECT_STREQ(bytes, "a#b");
    EXPECT_TRUE(used);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, text, 1, bytes, 8, "#", &used), 1);
    EXPECT_FALSE(used);
}

TEST(CodePage, Utf8)
{
    EXPECT_EQ(narrow(65001, {0x00B0, 0x4E2D, 0xD83D, 0xDE00}),
              "\xC2\xB0\xE4\xB8\xAD\xF0\x9F\x98\x80");
    EXPECT_EQ(wide(65001, "\xC2\xB0\xF0\x9F\x98\x80"),
              (std::basic_string<WCHAR>{0xB0, 0xD83D, 0xDE00}));
    EXPECT_EQ(narrow(65001, {0xD800, 'a'}), "\xEF\xBF\xBD"
                                            "a");
    EXPECT_EQ(wide(65001, "a\xFFz"), (std::basic_string<WCHAR>{'a', 0xFFFD, 'z'}));
    WCHAR units[8];
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(65001, MB_ERR_INVALID_CHARS, "\xFF", 1, units, 8), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
}

TEST(CodePage, LengthsOfNullAreZero)
{
    EXPECT_EQ(lstrlenA(nullptr), 0);
    EXPECT_EQ(lstrlenW(nullptr), 0);
    EXPECT_EQ(lstrlenA("abc"), 3);
    EXPECT_EQ(lstrlenW(ZOR_W("ab")), 2);
}
