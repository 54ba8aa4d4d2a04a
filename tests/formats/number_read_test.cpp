// Text to numbers.
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "tests/formats/double_bits.h"
#include "tests/support/text.h"
#include "zorutils/formats/number_text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

const double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(StringToDouble, ReadsWhatStandsInFrontAndCleansItToTwelveDecimals)
{
    const struct
    {
        const char* text;
        bool result;
        double value;
    } cases[] = {
        {"", false, 0.0},
        {"abc", false, 0.0},
        {" ", false, 0.0},
        {"-", false, 0.0},
        {".", false, 0.0},
        {",", false, 0.0},
        {"+-1", false, 0.0},
        {"e5", false, 0.0},
        {"0", true, 0.0},
        {"-0", true, -0.0},
        {"1", true, 1.0},
        {"12abc", true, 12.0},
        {"12.5 m", true, 12.5},
        {" \t\r\n12.5", true, 12.5},
        {"+12.5", true, 12.5},
        {"-12.5", true, -12.5},
        {"12,5", true, 12.5},
        {"1,234.5", true, 1.234},
        {"1.234,5", true, 1.234},
        {"1,2,3", true, 1.2},
        {"1 2", true, 1.0},
        {".5", true, 0.5},
        {",5", true, 0.5},
        {"5.", true, 5.0},
        {"-.5", true, -0.5},
        {"1e3", true, 1000.0},
        {"1E-3", true, 0.001},
        {"1,5e1", true, 15.0},
        {"1e", true, 1.0},
        {"1e+", true, 1.0},
        {"0.1", true, 0.1},
        {"0.1000000000001", true, 0.1},
        {"0.1000000000005", true, 0.100000000001},
        {"-0.1000000000005", true, -0.100000000001},
        {"0.0000000000004", true, 0.0},
        {"-0.0000000000004", true, -0.0},
        {"123456.789", true, 123456.789},
        {"1e290", true, 1e290},
        {"1e400", true, infinity},
        {"-1e400", true, -infinity},
        {"1e-400", true, 0.0},
        // Cleaning runs out of range above 1.8e296.
        {"1e300", true, infinity},
        {"0000000000000000000000000000000000000000000000012", true, 12.0},
    };
    for (const auto& c : cases) {
        double value = 77.0;
        EXPECT_EQ(StringToDouble(Wide(c.text), value), c.result) << c.text;
        EXPECT_SAME_DOUBLE(value, c.value) << c.text;
    }
}

TEST(StringToDouble, TheNearestDoubleIsRead)
{
    // Zero is not cleaned and large whole numbers come through cleaning unharmed, so the reading
    // itself shows.
    const struct
    {
        const char* text;
        double value;
    } cases[] = {
        {"123456789", 123456789.0},
        // Adding the half for cleaning takes an odd number above 2^52 to the next even one.
        {"4503.599627370497", 4503599627370498.0 / 1e12},
        {"1.7976931348623157e290", 1.7976931348623157e290},
        {"2.2250738585072011e-308", 0.0},
        {"0.500000000000166533453693773481063544750213623046875", 0.5},
        {"9007.199254740993", 9007.199254740993},
    };
    for (const auto& c : cases) {
        double value = 77.0;
        ASSERT_TRUE(StringToDouble(Wide(c.text), value));
        EXPECT_SAME_DOUBLE(value, c.value) << c.text;
    }
}

template <class T>
struct IntegerCase
{
    const WCHAR* text;
    bool result;
    T value;
};

template <class T, size_t N>
void expect_read(bool (*read)(const WCHAR*, T&), const IntegerCase<T> (&cases)[N])
{
    for (const auto& c : cases) {
        T value = 77;
        EXPECT_EQ(read(c.text, value), c.result) << shown(c.text);
        EXPECT_EQ(value, c.value) << shown(c.text);
    }
}

// What all five readers share.
template <class T>
void expect_common(bool (*read)(const WCHAR*, T&))
{
    const IntegerCase<T> cases[] = {
        {nullptr, false, 0},          {ZOR_W(""), false, 0},      {ZOR_W(" "), false, 0},
        {ZOR_W("abc"), false, 0},     {ZOR_W("-"), false, 0},     {ZOR_W("+"), false, 0},
        {ZOR_W("."), false, 0},       {ZOR_W("0"), true, 0},      {ZOR_W("12"), true, 12},
        {ZOR_W(" \t\n12"), true, 12}, {ZOR_W("12abc"), true, 12}, {ZOR_W("12.7"), true, 12},
        {ZOR_W("+12"), true, 12},     {ZOR_W("012"), true, 12},   {ZOR_W("0x12"), true, 0},
        {ZOR_W("- 12"), false, 0},    {ZOR_W("1 2"), true, 1},
    };
    expect_read(read, cases);
}

TEST(IntegerReaders, ShareOneShape)
{
    expect_common<int>(StringToInt);
    expect_common<LONG>(StringToLong);
    expect_common<short>(StringToShort);
    expect_common<unsigned int>(StringToUint);
    expect_common<INT64>(StringToInt64);
}

TEST(IntegerReaders, HaveTheScannersOwnRange)
{
    expect_read<int>(StringToInt, {{ZOR_W("-12"), true, -12},
                                   {ZOR_W("2147483647"), true, INT_MAX},
                                   {ZOR_W("-2147483648"), true, INT_MIN}});
    expect_read<LONG>(StringToLong,
                      {{ZOR_W("-12"), true, -12}, {ZOR_W("-2147483648"), true, INT_MIN}});
    expect_read<short>(StringToShort, {{ZOR_W("-12"), true, -12},
                                       {ZOR_W("32767"), true, 32767},
                                       {ZOR_W("-32768"), true, -32768},
                                       // Cut to 16 bits.
                                       {ZOR_W("65537"), true, 1},
                                       {ZOR_W("70000"), true, 4464}});
    expect_read<unsigned int>(
        StringToUint, {{ZOR_W("4294967295"), true, UINT_MAX}, {ZOR_W("-1"), true, UINT_MAX}});
    expect_read<INT64>(StringToInt64, {{ZOR_W("-9223372036854775808"), true, LLONG_MIN},
                                       {ZOR_W("9223372036854775807"), true, LLONG_MAX},
                                       {ZOR_W("2147483648"), true, 2147483648LL}});
}

TEST(Classifying, TextsThatMayBecomeADouble)
{
    const struct
    {
        const char* text;
        bool plain, negative, exponent, both; // by what is allowed
    } cases[] = {
        {"", true, true, true, true},          {" \t ", true, true, true, true},
        {"12", true, true, true, true},        {" 12", true, true, true, true},
        {"1 2", true, true, true, true},       {"12 ", true, true, true, true},
        {"1\t2", true, true, true, true},      {".", true, true, true, true},
        {",", true, true, true, true},         {"1.", true, true, true, true},
        {".5", true, true, true, true},        {"1,5", true, true, true, true},
        {"1.2.3", false, false, false, false}, {"1,2.3", false, false, false, false},
        {"1..", false, false, false, false},   {"-", false, true, false, true},
        {"-1", false, true, false, true},      {" -1", false, true, false, true},
        {"1-2", false, false, false, false},   {"--1", false, false, false, false},
        {"-+1", false, false, false, false},   {".-1", false, false, false, false},
        {"+", true, true, true, true},         {"+1", true, true, true, true},
        {"1+", false, false, false, false},    {"+ 1", true, true, true, true},
        {"e", false, false, true, true},       {"1e", false, false, true, true},
        {"1E", false, false, true, true},      {"1e5", false, false, true, true},
        {"1e-5", false, false, true, true},    {"1e+5", false, false, true, true},
        {"1e--5", false, false, false, false}, {"1e5-", false, false, false, false},
        {"1e5e", false, false, false, false},  {"1e5.", false, false, false, false},
        {"1.5e5", false, false, true, true},   {"-1e-5", false, false, false, true},
        {"abc", false, false, false, false},   {"1a", false, false, false, false},
        {"1\n", false, false, false, false},   {"1:2", false, false, false, false},
    };
    for (const auto& c : cases) {
        const Wide text(c.text);
        EXPECT_EQ(is_str_double(text, false, false), c.plain) << c.text;
        EXPECT_EQ(is_str_double(text, true, false), c.negative) << c.text;
        EXPECT_EQ(is_str_double(text, false, true), c.exponent) << c.text;
        EXPECT_EQ(is_str_double(text, true, true), c.both) << c.text;
        const bool digit = std::string(c.text).find_first_of("0123456789") != std::string::npos;
        EXPECT_EQ(is_str_notempty_double(text, true), c.both && digit) << c.text;
        EXPECT_EQ(is_str_notempty_double(text, false), c.exponent && digit) << c.text;
    }
}

TEST(Classifying, TheLocalesDecimalSignPassesOnce)
{
    const Wide sign = DecimalSignString();
    EXPECT_TRUE(is_str_double(Wide(ZOR_W("1")) += sign, false, false));
    Wide twice = sign;
    twice += sign;
    EXPECT_FALSE(is_str_double(twice, false, false));
}

TEST(Classifying, TextsThatMayBecomeAnInteger)
{
    const struct
    {
        const WCHAR* text;
        bool plain, negative;
    } cases[] = {
        {nullptr, false, false},      {ZOR_W(""), true, true},      {ZOR_W(" \t"), true, true},
        {ZOR_W("12"), true, true},    {ZOR_W(" \t12"), true, true}, {ZOR_W("-"), false, true},
        {ZOR_W("-12"), false, true},  {ZOR_W(" -12"), false, true}, {ZOR_W("--12"), false, false},
        {ZOR_W("1-"), false, false},  {ZOR_W("+1"), false, false},  {ZOR_W("1 "), false, false},
        {ZOR_W("1 2"), false, false}, {ZOR_W("- 1"), false, false}, {ZOR_W("1.0"), false, false},
        {ZOR_W("a"), false, false},   {ZOR_W("\n1"), false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(is_str_int(c.text, false), c.plain) << shown(c.text);
        EXPECT_EQ(is_str_int(c.text, true), c.negative) << shown(c.text);
    }
}
