// The contract of the formatters. Expected texts are those of the Windows build.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <limits>
#include <string>

#include "zorutils/platform/crt.h"

namespace {

// Formats as wide and, where the format says nothing of widths, as narrow too; gives ASCII.
std::string wide(const WCHAR* format, ...)
{
    WCHAR buffer[800];
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(buffer, 799, format, arguments);
    va_end(arguments);
    if (length < 0)
        return "(" + std::to_string(length) + ")";
    std::string text;
    for (int i = 0; i < length; ++i)
        text += static_cast<char>(buffer[i] < 0x100 ? buffer[i] : '~');
    EXPECT_EQ(buffer[length], 0);
    return text;
}

std::string narrow(const char* format, ...)
{
    char buffer[800];
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnprintf(buffer, 799, format, arguments);
    va_end(arguments);
    return length < 0 ? "(" + std::to_string(length) + ")" : std::string(buffer);
}

} // namespace

TEST(CrtFormat, ExactHalvesGoAwayFromZeroInEveryForm)
{
    EXPECT_EQ(wide(ZOR_W("%.0f|%.0f|%.0f|%.0f"), 0.5, 1.5, 2.5, -0.5), "1|2|3|-1");
    EXPECT_EQ(wide(ZOR_W("%.1f|%.2f|%.2f|%.2f"), 1.25, 62.125, 2.675, 0.125),
              "1.3|62.13|2.67|0.13");
    EXPECT_EQ(wide(ZOR_W("%.0e|%.1e|%.0g|%.1g|%.2g"), 2.5, 1.25, 2.5, 0.25, 1.25),
              "3e+000|1.3e+000|3|0.3|1.3");
    EXPECT_EQ(wide(ZOR_W("%5.2f"), 1.005), " 1.00");
}

TEST(CrtFormat, EveryDigitIsExact)
{
    EXPECT_EQ(wide(ZOR_W("%.25f"), 2.675), "2.6749999999999998223643161");
    EXPECT_EQ(wide(ZOR_W("%.17f"), 0.1), "0.10000000000000001");
    EXPECT_EQ(wide(ZOR_W("%f"), 1e22), "10000000000000000000000.000000");
    EXPECT_EQ(wide(ZOR_W("%.0f"), 123456789012345678.0), "123456789012345680");
}

TEST(CrtFormat, WhatIsNoNumberIsSpeltAsRoundedDigits)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(wide(ZOR_W("%f|%.0f|%.1f|%.2f|%.3f|%.4f|%.7f"), infinity, infinity, infinity,
                   infinity, infinity, infinity, infinity),
              "1.#INF00|1|1.$|1.#J|1.#IO|1.#INF|1.#INF000");
    EXPECT_EQ(wide(ZOR_W("%f|%.1f|%.2f|%.3f|%.4f|%.5f"), nan, nan, nan, nan, nan, nan),
              "1.#QNAN0|1.$|1.#R|1.#QO|1.#QNB|1.#QNAN");
    EXPECT_EQ(wide(ZOR_W("%f|%.12lf|%f"), -infinity, -infinity, -nan),
              "-1.#INF00|-1.#INF00000000|-1.#IND00");
    EXPECT_EQ(wide(ZOR_W("%e|%g|%.3g|%010f|%-10.2f|%+f"), infinity, infinity, infinity, infinity,
                   infinity, infinity),
              "1.#INF00e+000|1.#INF|1.#J|001.#INF00|1.#J      |+1.#INF00");
}

TEST(CrtFormat, ExponentsHaveThreeDigits)
{
    EXPECT_EQ(wide(ZOR_W("%e|%E|%.0e|%.3e|%#.0e"), 12345.678, 12345.678, 12345.678, 12345.678, 1.0),
              "1.234568e+004|1.234568E+004|1e+004|1.235e+004|1.e+000");
    EXPECT_EQ(wide(ZOR_W("%g|%G|%#g|%g|%g|%g"), 0.0001, 0.00001, 1.0, 1e15, 123456789.0, 100000.0),
              "0.0001|1E-005|1.00000|1e+015|1.23457e+008|100000");
    EXPECT_EQ(wide(ZOR_W("%g|%g|%g|%g|%.3g"), 1e6, 999999.5, 0.00012345, -0.0, 1e100),
              "1e+006|1e+006|0.00012345|-0|1e+100");
    EXPECT_EQ(wide(ZOR_W("%a|%A"), 1.5, 1.5), "0x1.8000000000000p+0|0X1.8000000000000P+0");
}

TEST(CrtFormat, WholeNumbers)
{
    EXPECT_EQ(wide(ZOR_W("%d|%5d|%-5d|%05d|%+d|% d|%.3d|%5.3d|%.0d|%i"), 42, 42, 42, 42, 42, 42, 42,
                   42, 0, -7),
              "42|   42|42   |00042|+42| 42|042|  042||-7");
    EXPECT_EQ(
        wide(ZOR_W("%u|%o|%x|%X|%#x|%#o|%08X|%#X"), 3000000000u, 8, 255, 255, 255, 8, 0xABCD, 255),
        "3000000000|10|ff|FF|0xff|010|0000ABCD|0XFF");
    EXPECT_EQ(wide(ZOR_W("%#.3x|%#10x|%#010x|%+u|%#x|%.0x|%5.0d|"), 5, 255, 255, 5, 0, 0, 0),
              "0x005|      0xff|0x000000ff|5|0||     |");
    EXPECT_EQ(wide(ZOR_W("%-05d|%+-5d|%0-5d"), 5, 5, 5), "5    |+5   |5    ");
}

TEST(CrtFormat, SizesHaveTheirOwnWidths)
{
    EXPECT_EQ(wide(ZOR_W("%I64d|%I64u|%I64x|%lld|%llu|%I32d"), -5000000000ll, 5000000000ull,
                   5000000000ull, -5000000000ll, 5000000000ull, 7),
              "-5000000000|5000000000|12a05f200|-5000000000|5000000000|7");
    EXPECT_EQ(wide(ZOR_W("%hd|%hu|%ld|%lu|%lf|%lg"), 70000, 70000, -1, -1, 1.5, 1.5),
              "4464|4464|-1|4294967295|1.500000|1.5");
    EXPECT_EQ(wide(ZOR_W("%p"), reinterpret_cast<void*>(0x1234)), "0000000000001234");
}

TEST(CrtFormat, TextWidthsFollowTheFunctionOrTheSize)
{
    EXPECT_EQ(wide(ZOR_W("%s|%S|%hs|%ls|%ws|%c|%C|%hc|%lc"), ZOR_W("wide"), "narrow", "h",
                   ZOR_W("l"), ZOR_W("w"), 'a', 'b', 'c', 'd'),
              "wide|narrow|h|l|w|a|b|c|d");
    EXPECT_EQ(narrow("%s|%S|%hs|%ls|%c|%C|%lc|%hc|%hS|%lS", "narrow", ZOR_W("wide"), "h",
                     ZOR_W("l"), 'a', 'b', 'c', 'd', "q", ZOR_W("r")),
              "narrow|wide|h|l|a|b|c|d|q|r");
    EXPECT_EQ(wide(ZOR_W("%10s|%-10s|%.2s|%10.2s|%010s"), ZOR_W("abc"), ZOR_W("abc"), ZOR_W("abc"),
                   ZOR_W("abc"), ZOR_W("abc")),
              "       abc|abc       |ab|        ab|0000000abc");
    EXPECT_EQ(wide(ZOR_W("%.3S|%6.2S|%5c|%-5c|%05c"), "abcdef", "xyz", 'a', 'b', 'c'),
              "abc|    xy|    a|b    |0000c");
}

TEST(CrtFormat, BytesAndUnitsOfOneValueStandForEachOther)
{
    EXPECT_EQ(wide(ZOR_W("%S|%C"), "\x80\xB0", 0x80), "\x80\xB0|\x80");
    EXPECT_EQ(narrow("%S", ZOR_W("\xB0")), "\xB0");
    // A unit without a byte: a text fails as a whole, a character leaves nothing.
    EXPECT_EQ(narrow("%S", ZOR_W("\x20AC")), "(-1)");
    EXPECT_EQ(narrow("%C|%lc", 0x20AC, 0x20AC), "|");
}

TEST(CrtFormat, NullTextsAreNamed)
{
    EXPECT_EQ(wide(ZOR_W("%s|%S"), static_cast<WCHAR*>(nullptr), static_cast<char*>(nullptr)),
              "(null)|(null)");
    EXPECT_EQ(narrow("%s %S", static_cast<char*>(nullptr), static_cast<WCHAR*>(nullptr)),
              "(null) (null)");
}

TEST(CrtFormat, WidthsAndPrecisionsFromArguments)
{
    EXPECT_EQ(wide(ZOR_W("%*d|%.*f|%*.*f|%*d|%*s|%-*s|%.*s"), 5, 42, 2, 1.239, 8, 2, 3.14159, -5,
                   42, 6, ZOR_W("x"), 6, ZOR_W("y"), 1, ZOR_W("zz")),
              "   42|1.24|    3.14|42   |     x|y     |z");
    EXPECT_EQ(wide(ZOR_W("%.*f"), -1, 1.5), "1.500000");
}

TEST(CrtFormat, WhatIsNoConversionIsText)
{
    EXPECT_EQ(wide(ZOR_W("%%|%5%|%y|%|%q|%-|%5"), 1), "%||y||q||");
    EXPECT_EQ(wide(ZOR_W("end%")), "end");
    EXPECT_EQ(wide(ZOR_W("a%lb"), 5), "ab");
    EXPECT_EQ(wide(ZOR_W("%.-1lf"), 1.5), "-1lf");
    EXPECT_EQ(wide(ZOR_W("%.f|%.d|%. d"), 2.5, 0, 5), "3|| d");
}

TEST(CrtFormat, ATextThatDoesNotFitFillsTheBufferAndIsNegative)
{
    const struct
    {
        size_t size;
        const char* text;
        int result;
        const char* buffer;
    } rows[] = {{4, "abc", 3, "abc"},     {3, "abc", 3, "abc###"}, {3, "abcd", -1, "abc###"},
                {0, "abc", -1, "######"}, {0, "", 0, "######"},    {1, "", 0, ""}};
    for (const auto& row : rows) {
        char buffer[] = "######";
        EXPECT_EQ(_snprintf(buffer, row.size, "%s", row.text), row.result) << row.size << row.text;
        EXPECT_STREQ(buffer, row.buffer) << row.size << row.text;
        WCHAR units[] = {'#', '#', '#', '#', '#', '#', 0};
        EXPECT_EQ(_snwprintf(units, row.size, ZOR_W("%S"), row.text), row.result)
            << row.size << row.text;
        EXPECT_EQ(std::string(units, units + wcslen(units)), row.buffer) << row.size << row.text;
    }
}
