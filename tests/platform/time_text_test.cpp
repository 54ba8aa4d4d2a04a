#include "zorutils/platform/crt.h"

#include <gtest/gtest.h>

#include <errno.h>
#include <string>

namespace {

using Text = std::basic_string<WCHAR>;

// 2024-03-05 09:08:07, a Tuesday.
constexpr int march_fifth[] = {7, 8, 9, 5, 2, 124, 2, 64};

tm fields_of(const int (&numbers)[8])
{
    tm fields = {};
    fields.tm_sec = numbers[0];
    fields.tm_min = numbers[1];
    fields.tm_hour = numbers[2];
    fields.tm_mday = numbers[3];
    fields.tm_mon = numbers[4];
    fields.tm_year = numbers[5];
    fields.tm_wday = numbers[6];
    fields.tm_yday = numbers[7];
    return fields;
}

// The text, or "<error>" for a result of 0 with an error.
std::string formatted(const WCHAR* format, const int (&numbers)[8] = march_fifth)
{
    WCHAR text[300];
    text[0] = 'u';
    const tm fields = fields_of(numbers);
    errno = 0;
    const size_t length = wcsftime(text, 300, format, &fields);
    EXPECT_EQ(Text(text).size(), length);
    if (length == 0 && errno != 0)
        return errno == EINVAL ? "<invalid>" : "<error>";
    return std::string(text, text + length);
}

struct ConversionCase
{
    const WCHAR* format;
    const char* expected;
};

class Wcsftime : public testing::TestWithParam<ConversionCase>
{
};

TEST_P(Wcsftime, Converts)
{
    EXPECT_EQ(formatted(GetParam().format), GetParam().expected);
}

const ConversionCase conversion_cases[] = {
    {ZOR_W("%a %A"), "Tue Tuesday"},
    {ZOR_W("%b %B"), "Mar March"},
    {ZOR_W("%c"), "03/05/24 09:08:07"},
    {ZOR_W("%#c"), "Tuesday, March 05, 2024 09:08:07"},
    {ZOR_W("%x"), "03/05/24"},
    {ZOR_W("%#x"), "Tuesday, March 05, 2024"},
    {ZOR_W("%X %#X"), "09:08:07 09:08:07"},
    {ZOR_W("%d %#d"), "05 5"},
    {ZOR_W("%H %#H"), "09 9"},
    {ZOR_W("%I %#I"), "09 9"},
    {ZOR_W("%j %#j"), "065 65"},
    {ZOR_W("%m %#m"), "03 3"},
    {ZOR_W("%M %#M"), "08 8"},
    {ZOR_W("%S %#S"), "07 7"},
    {ZOR_W("%p %#p"), "AM AM"},
    {ZOR_W("%U %#U"), "09 9"},
    {ZOR_W("%W %#W"), "10 10"},
    {ZOR_W("%w %#w"), "2 2"},
    {ZOR_W("%y %#y"), "24 24"},
    {ZOR_W("%Y %#Y"), "2024 2024"},
    {ZOR_W("%% %#%"), "% %"},
    {ZOR_W("%Y%%%m"), "2024%03"},
    {ZOR_W("plain"), "plain"},
    {ZOR_W(""), ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, Wcsftime, testing::ValuesIn(conversion_cases));

TEST(Wcsftime, RefusesEveryOtherConversion)
{
    const std::string known = "aAbBcdHIjmMpSUwWxXyYzZ%#";
    for (char letter = '!'; letter <= '~'; ++letter) {
        if (known.find(letter) != std::string::npos)
            continue;
        const WCHAR format[] = {'%', static_cast<WCHAR>(letter), 0};
        EXPECT_EQ(formatted(format), "<invalid>") << letter;
    }
    for (const WCHAR* format : {ZOR_W("%"), ZOR_W("abc%"), ZOR_W("%#"), ZOR_W("%Ey"), ZOR_W("%Od"),
                                ZOR_W("%-d"), ZOR_W("%02d"), ZOR_W("%4Y"), ZOR_W("%##d")})
        EXPECT_EQ(formatted(format), "<invalid>");
}

TEST(Wcsftime, EmptiesTheTextOnARefusal)
{
    WCHAR text[10] = {'u', 'u', 0};
    const tm fields = fields_of(march_fifth);
    EXPECT_EQ(wcsftime(text, 10, ZOR_W("abc%q"), &fields), 0u);
    EXPECT_EQ(text[0], 0);
}

TEST(Wcsftime, NamesTheZoneByBothLetters)
{
    EXPECT_FALSE(formatted(ZOR_W("%Z")).empty());
    EXPECT_EQ(formatted(ZOR_W("%z")), formatted(ZOR_W("%Z")));
    EXPECT_EQ(formatted(ZOR_W("%#z")), formatted(ZOR_W("%Z")));
}

struct FieldCase
{
    const WCHAR* format;
    int numbers[8];
    const char* expected;
};

TEST(Wcsftime, CountsHoursWeeksAndYears)
{
    const FieldCase cases[] = {
        {ZOR_W("%I %p"), {0, 0, 0, 1, 0, 124, 1, 0}, "12 AM"},
        {ZOR_W("%I %p"), {0, 0, 12, 1, 0, 124, 1, 0}, "12 PM"},
        {ZOR_W("%I %p"), {59, 59, 23, 1, 0, 124, 1, 0}, "11 PM"},
        {ZOR_W("%U %W %j"), {0, 0, 0, 1, 0, 124, 1, 0}, "00 01 001"},
        {ZOR_W("%U %W"), {0, 0, 0, 1, 0, 123, 0, 0}, "01 00"},
        {ZOR_W("%U %W"), {0, 0, 0, 1, 0, 122, 6, 0}, "00 00"},
        {ZOR_W("%U %W"), {0, 0, 0, 3, 0, 122, 1, 2}, "01 01"},
        {ZOR_W("%U %W %j"), {0, 0, 0, 31, 11, 124, 2, 365}, "52 53 366"},
        {ZOR_W("%U %W %j"), {0, 0, 0, 31, 11, 123, 0, 364}, "53 52 365"},
        {ZOR_W("%y %#y"), {0, 0, 0, 1, 0, 107, 1, 0}, "07 7"},
        {ZOR_W("%Y %y"), {0, 0, 0, 1, 0, 0, 1, 0}, "1900 00"},
        {ZOR_W("%Y %y"), {0, 0, 0, 1, 0, 1101, 1, 0}, "3001 01"},
        {ZOR_W("%Y %y"), {0, 0, 0, 1, 0, 8099, 1, 0}, "9999 99"},
        {ZOR_W("%Y"), {0, 0, 0, 1, 0, -1, 1, 0}, "1899"},
        {ZOR_W("%Y"), {0, 0, 0, 1, 0, -1900, 1, 0}, "0000"},
        // Fields that don't fit each other are written as they are.
        {ZOR_W("%d %j %x"), {1, 1, 1, 31, 1, 124, 1, 1}, "31 002 02/31/24"},
    };
    for (const FieldCase& expected : cases)
        EXPECT_EQ(formatted(expected.format, expected.numbers), expected.expected);
}

TEST(Wcsftime, RefusesAFieldOutOfRangeOnlyWhereItIsUsed)
{
    const FieldCase cases[] = {
        {ZOR_W("%S"), {60, 8, 9, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%X"), {60, 8, 9, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%c"), {60, 8, 9, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%H:%M"), {60, 8, 9, 5, 2, 124, 2, 64}, "09:08"},
        {ZOR_W("x"), {60, 60, 24, 32, 12, 9999, 7, 366}, "x"},
        {ZOR_W("%M"), {7, 60, 9, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%M"), {7, -1, 9, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%H"), {7, 8, 24, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%I"), {7, 8, -1, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%p"), {7, 8, 24, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%p"), {7, 8, -1, 5, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%d"), {7, 8, 9, 0, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%d"), {7, 8, 9, 32, 2, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%m"), {7, 8, 9, 5, 12, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%b"), {7, 8, 9, 5, -1, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%B"), {7, 8, 9, 5, 12, 124, 2, 64}, "<invalid>"},
        {ZOR_W("%a"), {7, 8, 9, 5, 2, 124, 7, 64}, "<invalid>"},
        {ZOR_W("%A"), {7, 8, 9, 5, 2, 124, -1, 64}, "<invalid>"},
        {ZOR_W("%w"), {7, 8, 9, 5, 2, 124, 7, 64}, "<invalid>"},
        {ZOR_W("%U"), {7, 8, 9, 5, 2, 124, 7, 64}, "<invalid>"},
        {ZOR_W("%W"), {7, 8, 9, 5, 2, 124, 2, 366}, "<invalid>"},
        {ZOR_W("%j"), {7, 8, 9, 5, 2, 124, 2, 366}, "<invalid>"},
        {ZOR_W("%j"), {7, 8, 9, 5, 2, 124, 2, -1}, "<invalid>"},
        {ZOR_W("%y"), {7, 8, 9, 5, 2, -1, 2, 64}, "<invalid>"},
        {ZOR_W("%x"), {7, 8, 9, 5, 2, -1, 2, 64}, "<invalid>"},
        {ZOR_W("%Y"), {7, 8, 9, 5, 2, 8100, 2, 64}, "<invalid>"},
        {ZOR_W("%#x"), {7, 8, 9, 5, 2, 8100, 2, 64}, "<invalid>"},
        {ZOR_W("%Y"), {7, 8, 9, 5, 2, -1901, 2, 64}, "<invalid>"},
        {ZOR_W("%y"), {7, 8, 9, 5, 2, 8100, 2, 64}, "00"},
    };
    for (const FieldCase& expected : cases) {
        EXPECT_EQ(formatted(expected.format, expected.numbers), expected.expected)
            << testing::PrintToString(Text(expected.format));
    }
}

TEST(Wcsftime, NeedsRoomForTheTextAndItsEnd)
{
    const tm fields = fields_of(march_fifth);
    WCHAR text[10] = {};
    EXPECT_EQ(wcsftime(text, 5, ZOR_W("%Y"), &fields), 4u);
    EXPECT_EQ(Text(text), Text(ZOR_W("2024")));
}

// Some run-times give the size where the text doesn't fit; none gives a length that could be true.
TEST(Wcsftime, NeverGivesALengthInItsSizeForATextThatDoesntFit)
{
    const tm fields = fields_of(march_fifth);
    WCHAR text[10] = {};
    for (size_t size = 0; size <= 4; ++size) {
        const size_t length = wcsftime(text, size, ZOR_W("%Y"), &fields);
        EXPECT_TRUE(length == 0 || length >= size) << size;
    }
    text[0] = 'u';
    EXPECT_EQ(wcsftime(text, 0, ZOR_W("%Y"), &fields), 0u);
    EXPECT_EQ(text[0], 'u');
}

} // namespace
