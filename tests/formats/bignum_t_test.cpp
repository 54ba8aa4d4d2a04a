// The big number: fields, states, texts and comparison.
#include "zorutils/formats/bignum_t.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <string>

#include "tests/formats/bignum_text.h"

TEST(Bignum, FieldsLieInOrderAndCopiesAreByteCopies)
{
    EXPECT_EQ(offsetof(Big, digits), 0u);
    EXPECT_EQ(offsetof(Big, sign), 255u);
    EXPECT_EQ(offsetof(Big, top), 256u);
    EXPECT_EQ(sizeof(Big), 258u);
    EXPECT_TRUE(std::is_trivially_copyable<Big>::value);
    Big source = big("-123"), copy;
    memcpy(static_cast<void*>(&copy), &source, sizeof source);
    EXPECT_EQ(text_of(copy), "-123");
}

TEST(Bignum, AFreshObjectIsNaNWithClearDigits)
{
    for (int way = 0; way < 3; ++way) {
        Big fresh;
        if (way != 0)
            memset(static_cast<void*>(&fresh), 0x55, sizeof fresh);
        if (way == 1)
            fresh.init();
        if (way == 2)
            fresh.constructor();
        EXPECT_TRUE(fresh.isNaN());
        EXPECT_FALSE(fresh.isZero());
        EXPECT_FALSE(fresh.isNegative());
        EXPECT_EQ(fresh.top, -1);
        EXPECT_EQ(fresh.sign, 1);
        for (unsigned char digit : fresh.digits)
            EXPECT_EQ(digit, 0);
    }
    Big copied;
    copied.constructor(big("7"));
    EXPECT_EQ(text_of(copied), "7");
}

TEST(Bignum, SetNaNTouchesOnlyTheTop)
{
    Big number = big("-45");
    number.setNaN();
    EXPECT_TRUE(number.isNaN());
    EXPECT_EQ(number.sign, 255);
    EXPECT_EQ(number.digits[0], 5);
    EXPECT_EQ(number.digits[1], 4);
}

TEST(Bignum, TextsInBothWidths)
{
    const std::string nines(255, '9');
    const struct
    {
        std::string text;
        std::string expected; // "NaN" for a failure
    } cases[] = {
        {"0", "0"},
        {"000", "0"},
        {"-0", "0"},
        {"7", "7"},
        {"007", "7"},
        {"+5", "5"},
        {"-5", "-5"},
        {"+-5", "-5"},
        {"-+5", "5"},
        {"--5", "-5"},
        {"-+-+5", "5"},
        {"1234567890", "1234567890"},
        {nines, nines},
        {std::string(255, '0'), "0"},
        {"-" + std::string(254, '9'), "-" + std::string(254, '9')},
        {"", "NaN"},
        {"+", "NaN"},
        {"-", "NaN"},
        {"+-", "NaN"},
        {"5-", "NaN"},
        {"5+5", "NaN"},
        {" 5", "NaN"},
        {"5 ", "NaN"},
        {"- 5", "NaN"},
        {"5.0", "NaN"},
        {"0x5", "NaN"},
        {"a", "NaN"},
        {"5/", "NaN"},
        {"5:", "NaN"},
        {nines + "9", "NaN"},
        // The length counts, whatever its characters.
        {"-" + nines, "NaN"},
        {std::string(256, '0'), "NaN"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(text_of(big(c.text.c_str())), c.expected);
        Big wide;
        wide = std::basic_string<WCHAR>(c.text.begin(), c.text.end()).c_str();
        EXPECT_EQ(text_of(wide), c.expected);
    }
    Big number = big("5");
    number = static_cast<const char*>(nullptr);
    EXPECT_TRUE(number.isNaN());
    number = big("5");
    number = static_cast<const WCHAR*>(nullptr);
    EXPECT_TRUE(number.isNaN());
}

TEST(Bignum, AUnitWhoseLowByteIsADigitIsNone)
{
    Big number;
    const WCHAR text[] = {0x0131, 0};
    number = text;
    EXPECT_TRUE(number.isNaN());
}

TEST(Bignum, ZeroHasTopZeroAndPositiveSign)
{
    for (const char* text : {"0", "000", "-0", "-000"}) {
        const Big zero = big(text);
        EXPECT_TRUE(zero.isZero());
        EXPECT_EQ(zero.top, 0);
        EXPECT_EQ(zero.sign, 1);
        EXPECT_FALSE(zero.isNegative());
    }
    Big unnormal = big("100");
    unnormal.digits[2] = 0;
    EXPECT_TRUE(unnormal.isZero());
    EXPECT_FALSE(big("100").isZero());
}

TEST(Bignum, CompareOrdersNaNBelowNegativeBelowZeroBelowPositive)
{
    const char* const ascending[] = {"NaN", "-1000", "-999", "-12", "-11", "-1", "0",
                                     "1",   "9",     "10",   "99",  "100", "101"};
    for (const char* a : ascending) {
        for (const char* b : ascending) {
            SCOPED_TRACE(std::string(a) + " with " + b);
            const Big first = big(a), second = big(b);
            const auto place = [&](const char* text) {
                int i = 0;
                while (ascending[i] != text)
                    ++i;
                return i;
            };
            const int order = (place(a) > place(b)) - (place(a) < place(b));
            EXPECT_EQ(first.compare(second), order);
            EXPECT_EQ(first == second, order == 0);
            EXPECT_EQ(first < second, order < 0);
        }
    }
}

TEST(Bignum, CompareReadsAMissingDigitAsZero)
{
    Big padded = big("1005");
    padded.digits[3] = 0;
    EXPECT_EQ(padded.compare(big("5")), 0);
    EXPECT_EQ(big("5").compare(padded), 0);
    EXPECT_EQ(padded.compare(padded), 0);
}

template <class T>
class BignumInteger : public testing::Test
{
};

using IntegerTypes =
    testing::Types<char, unsigned char, short, unsigned short, int, unsigned int, long,
                   unsigned long, long long, unsigned long long, LONG, DWORD, INT64, UINT64>;
TYPED_TEST_SUITE(BignumInteger, IntegerTypes);

TYPED_TEST(BignumInteger, EveryValueButTheLowestOfASignedTypeIsAssigned)
{
    typedef std::numeric_limits<TypeParam> Limits;
    Big number;
    number = TypeParam(0);
    EXPECT_EQ(text_of(number), "0");
    EXPECT_EQ(number.top, 0);
    number = TypeParam(105);
    EXPECT_EQ(text_of(number), "105");
    number = Limits::max();
    EXPECT_EQ(text_of(number), std::to_string(Limits::max()));
    if (Limits::is_signed) {
        number = static_cast<TypeParam>(-105);
        EXPECT_EQ(text_of(number), "-105");
        number = static_cast<TypeParam>(-Limits::max());
        EXPECT_EQ(text_of(number), std::to_string(-Limits::max()));
        number = Limits::min();
        EXPECT_TRUE(number.isNaN());
    }
}

TYPED_TEST(BignumInteger, ValuesComeBackAndThoseBeyondTheRangeDoNot)
{
    typedef std::numeric_limits<TypeParam> Limits;
    const std::string lowest = std::to_string(Limits::min());
    const std::string highest = std::to_string(Limits::max());
    TypeParam value = 77;
    for (const std::string& text :
         {std::string("0"), std::string("7"), std::string("100"), lowest, highest}) {
        ASSERT_TRUE(big(text.c_str()).cast2int(value)) << text;
        EXPECT_EQ(std::to_string(value), text);
    }
    if (sizeof(TypeParam) < 8) {
        // The limits of the 64-bit types are only as sharp as a double.
        value = 77;
        Big beyond = big(highest.c_str());
        ++beyond;
        EXPECT_FALSE(beyond.cast2int(value));
        beyond = big(lowest.c_str());
        --beyond;
        EXPECT_FALSE(beyond.cast2int(value));
    }
    value = 77;
    EXPECT_FALSE(big("20000000000000000000").cast2int(value));
    EXPECT_FALSE(big("-20000000000000000000").cast2int(value));
    EXPECT_FALSE(big(std::string(255, '9').c_str()).cast2int(value));
    EXPECT_FALSE(big("NaN").cast2int(value));
    EXPECT_EQ(value, TypeParam(77));
}

TEST(Bignum, SixtyFourBitLimitsAreTestedInDouble)
{
    // One above the highest value is the same double as the highest itself: it passes and wraps.
    INT64 value = 0;
    EXPECT_TRUE(big("9223372036854775808").cast2int(value));
    EXPECT_EQ(value, std::numeric_limits<INT64>::min());
    EXPECT_FALSE(big("9223372036854777856").cast2int(value));
    // Digits beyond the precision of a double are exact.
    EXPECT_TRUE(big("9007199254740993").cast2int(value));
    EXPECT_EQ(value, 9007199254740993);
}

TEST(Bignum, CharTakes127AndNot128)
{
    char value = 0;
    EXPECT_TRUE(big("127").cast2int(value));
    EXPECT_EQ(value, 127);
    EXPECT_FALSE(big("128").cast2int(value));
    EXPECT_TRUE(big("-128").cast2int(value));
    EXPECT_EQ(value, -128);
}

TEST(Bignum, DoubleIsTheSumOfTheDigitsAndNaNOfNaN)
{
    EXPECT_EQ(static_cast<double>(big("0")), 0.0);
    EXPECT_EQ(static_cast<double>(big("-1234567")), -1234567.0);
    EXPECT_EQ(static_cast<double>(big("9007199254740992")), 9007199254740992.0);
    const double large = static_cast<double>(big(("1" + std::string(254, '0')).c_str()));
    EXPECT_NEAR(large / 1e254, 1.0, 1e-13);
    const double nan = static_cast<double>(big("NaN"));
    EXPECT_NE(nan, nan);
}

template <class C>
class BignumText : public testing::Test
{
};

using Widths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(BignumText, Widths);

TYPED_TEST(BignumText, FollowsTheSizeOfTheBuffer)
{
    const struct
    {
        const char* number;
        unsigned int size;
        bool result;
        const char* text; // null: the buffer is left as it was
    } cases[] = {
        {"7", 0, false, nullptr}, {"7", 1, true, ""},        {"7", 2, true, "7"},
        {"12", 2, false, ""},     {"12", 3, true, "12"},     {"12", 100, true, "12"},
        {"-7", 1, true, ""},      {"-7", 2, false, nullptr}, {"-7", 3, true, "-7"},
        {"-12", 3, false, ""},    {"-12", 4, true, "-12"},   {"NaN", 0, false, nullptr},
        {"NaN", 1, true, ""},     {"NaN", 100, true, ""},    {"0", 2, true, "0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.number) + " in " + std::to_string(c.size));
        TypeParam buffer[128];
        for (TypeParam& unit : buffer)
            unit = '#';
        unsigned int size = c.size;
        EXPECT_EQ(big(c.number).cast2s(buffer, size), c.result);
        EXPECT_EQ(size, c.size);
        const std::string text = c.text == nullptr ? "#" : c.text;
        const size_t compared = c.text == nullptr ? text.size() : text.size() + 1;
        for (size_t i = 0; i < compared; ++i)
            EXPECT_EQ(static_cast<int>(buffer[i]), static_cast<int>(text.c_str()[i])) << i;
        for (size_t i = c.size; i < 128; ++i)
            EXPECT_EQ(static_cast<int>(buffer[i]), '#') << i;
    }
    unsigned int size = 10;
    EXPECT_FALSE(big("7").cast2s(static_cast<TypeParam*>(nullptr), size));
}

TYPED_TEST(BignumText, ADigitAboveNineIsRefused)
{
    Big number = big("12");
    number.digits[0] = 10;
    TypeParam buffer[10];
    unsigned int size = 10;
    EXPECT_FALSE(number.cast2s(buffer, size));
    EXPECT_EQ(buffer[0], 0);
}
