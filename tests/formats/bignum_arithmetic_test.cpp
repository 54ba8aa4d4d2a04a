// The big number: arithmetic and its limits.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/formats/bignum_text.h"

namespace {

const std::string nines(255, '9');
const std::string ten_to_254 = "1" + std::string(254, '0');
const std::string ten_to_255 = "1" + std::string(255, '0');

struct Case
{
    std::string a, b, expected;
};

} // namespace

TEST(BignumArithmetic, Addition)
{
    const Case cases[] = {
        {"0", "0", "0"},
        {"5", "7", "12"},
        {"999", "1", "1000"},
        {"1", "999", "1000"},
        {"-5", "7", "2"},
        {"5", "-7", "-2"},
        {"-5", "-7", "-12"},
        {"-5", "5", "0"},
        {"5", "-5", "0"},
        {"1000", "-1", "999"},
        {"99999999999999999999", "1", "100000000000000000000"},
        {nines, "0", nines},
        {"NaN", "1", "NaN"},
        {"1", "NaN", "NaN"},
        {"NaN", "NaN", "NaN"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.a + " + " + c.b);
        const Big a = big(c.a.c_str()), b = big(c.b.c_str());
        EXPECT_EQ(text_of(a + b), c.expected);
        Big sum = a;
        EXPECT_EQ(&(sum += b), &sum);
        EXPECT_EQ(text_of(sum), c.expected);
        EXPECT_EQ(text_of(a), c.a);
        EXPECT_EQ(text_of(b), c.b);
    }
}

TEST(BignumArithmetic, Subtraction)
{
    const Case cases[] = {
        {"5", "7", "-2"},      {"7", "5", "2"},     {"-5", "-5", "0"},  {"-5", "7", "-12"},
        {"5", "-7", "12"},     {"-5", "-7", "2"},   {"-7", "-5", "-2"}, {"1000", "1", "999"},
        {"1", "1000", "-999"}, {"0", "0", "0"},     {"0", "5", "-5"},   {"NaN", "1", "NaN"},
        {"1", "NaN", "NaN"},   {nines, nines, "0"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.a + " - " + c.b);
        const Big a = big(c.a.c_str()), b = big(c.b.c_str());
        EXPECT_EQ(text_of(a - b), c.expected);
        Big difference = a;
        EXPECT_EQ(&(difference -= b), &difference);
        EXPECT_EQ(text_of(difference), c.expected);
    }
    EXPECT_EQ((big("-5") - big("-5")).sign, 1);
}

TEST(BignumArithmetic, Multiplication)
{
    const Case cases[] = {
        {"0", "0", "0"},
        {"0", "-7", "0"},
        {"-7", "0", "0"},
        {"12", "12", "144"},
        {"-12", "12", "-144"},
        {"12", "-12", "-144"},
        {"-12", "-12", "144"},
        {"99999999999", "99999999999", "9999999999800000000001"},
        {"1" + std::string(100, '0'), "1" + std::string(100, '0'), "1" + std::string(200, '0')},
        {std::string(127, '9'), std::string(127, '9'),
         std::string(126, '9') + "8" + std::string(126, '0') + "1"},
        {"NaN", "1", "NaN"},
        {"0", "NaN", "NaN"},
        // A product of 256 digits, and products beyond.
        {"5" + std::string(254, '0'), "2", ten_to_255},
        {ten_to_254, "10", "NaN"},
        {nines, nines, "NaN"},
        // With the sign goes the highest digit of the product.
        {"-5" + std::string(253, '0'), "20", "(refused)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.a + " * " + c.b);
        const Big a = big(c.a.c_str()), b = big(c.b.c_str());
        EXPECT_EQ(text_of(a * b), c.expected);
        Big product = a;
        EXPECT_EQ(&(product *= b), &product);
        EXPECT_EQ(text_of(product), c.expected);
    }
}

TEST(BignumArithmetic, DivisionTruncatesTowardZero)
{
    const Case cases[] = {
        {"7", "2", "3"},     {"7", "-2", "-3"},
        {"-7", "2", "-3"},   {"-7", "-2", "3"},
        {"6", "3", "2"},     {"1", "2", "0"},
        {"-1", "2", "0"},    {"0", "5", "0"},
        {"0", "-5", "0"},    {"1", "0", "NaN"},
        {"0", "0", "NaN"},   {"NaN", "1", "NaN"},
        {"1", "NaN", "NaN"}, {"100000000000000000000", "99999999999", "1000000000"},
        {nines, nines, "1"}, {nines, "9", std::string(255, '1')},
        {nines, "1", nines},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.a + " / " + c.b);
        const Big a = big(c.a.c_str()), b = big(c.b.c_str());
        EXPECT_EQ(text_of(a / b), c.expected);
        Big quotient = a;
        EXPECT_EQ(&(quotient /= b), &quotient);
        EXPECT_EQ(text_of(quotient), c.expected);
        EXPECT_EQ(text_of(b), c.b);
    }
    EXPECT_EQ((big("-1") / big("2")).sign, 1);
}

TEST(BignumArithmetic, AgreesWithTheMachineOverSmallNumbers)
{
    uint64_t state = 12345;
    const auto next = [&state](int bits) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const int64_t magnitude = static_cast<int64_t>(state >> (64 - bits));
        return (state & 1) != 0 ? magnitude : -magnitude;
    };
    for (int i = 0; i < 2000; ++i) {
        const int64_t a = next(1 + i % 31), b = next(1 + i / 31 % 31);
        Big x, y;
        x = static_cast<long long>(a);
        y = static_cast<long long>(b);
        EXPECT_EQ(text_of(x + y), std::to_string(a + b));
        EXPECT_EQ(text_of(x - y), std::to_string(a - b));
        EXPECT_EQ(text_of(x * y), std::to_string(a * b));
        if (b != 0) {
            EXPECT_EQ(text_of(x / y), std::to_string(a / b));
        }
        EXPECT_EQ(x.compare(y), (a > b) - (a < b));
    }
}

TEST(BignumArithmetic, AnObjectMayBeItsOwnOperand)
{
    Big number = big("-12");
    const Big& itself = number;
    number += itself;
    EXPECT_EQ(text_of(number), "-24");
    number *= itself;
    EXPECT_EQ(text_of(number), "576");
    number /= itself;
    EXPECT_EQ(text_of(number), "1");
    number -= itself;
    EXPECT_EQ(text_of(number), "0");
}

TEST(BignumArithmetic, StepsAndNegation)
{
    Big number = big("-1");
    EXPECT_EQ(text_of(++number), "0");
    EXPECT_EQ(number.sign, 1);
    EXPECT_EQ(text_of(number++), "0");
    EXPECT_EQ(text_of(number), "1");
    EXPECT_EQ(text_of(number--), "1");
    EXPECT_EQ(text_of(--number), "-1");
    EXPECT_EQ(text_of(-number), "1");
    EXPECT_EQ(text_of(-big("5")), "-5");
    EXPECT_EQ((-big("0")).sign, 1);
    EXPECT_TRUE((-big("NaN")).isNaN());
    Big nan = big("NaN");
    EXPECT_TRUE((++nan).isNaN());
    EXPECT_TRUE((nan--).isNaN());
}

TEST(BignumArithmetic, ASumMayHaveOneDigitMoreThanAText)
{
    const Big sum = big(nines.c_str()) + big("1");
    EXPECT_EQ(text_of(sum), ten_to_255);
    EXPECT_EQ(sum.top, 255);
    EXPECT_EQ(sum.sign, 1);
    EXPECT_TRUE((sum + big("1")).isNaN());
    EXPECT_TRUE((sum + big("0")).isNaN());
    EXPECT_EQ(text_of(sum - big("1")), nines);
    EXPECT_EQ(sum.compare(big(nines.c_str())), 1);
    EXPECT_EQ(text_of(sum / big("10")), ten_to_254);
    // The buffer for it holds 257 characters, not one less.
    char buffer[257];
    unsigned int size = 257;
    EXPECT_TRUE(sum.cast2s(buffer, size));
    size = 256;
    EXPECT_FALSE(sum.cast2s(buffer, size));
}

TEST(BignumArithmetic, TheCarryDigitReplacesTheSign)
{
    const std::string negative_nines = "-" + std::string(254, '9');
    // Two numbers of 254 digits have room: the sign stays.
    EXPECT_EQ(text_of(big(negative_nines.c_str()) + big("-1")), "-" + ten_to_254);
    // 255 digits cannot be assigned with a sign, but they can be negated.
    const Big negative = -big(nines.c_str());
    EXPECT_EQ(text_of(negative), "-" + nines);
    EXPECT_EQ(text_of(negative + big("-1")), ten_to_255);
    // Also without a carry.
    const Big lost = -big(ten_to_254.c_str()) + big("-1");
    EXPECT_EQ(text_of(lost), "1" + std::string(253, '0') + "1");
    EXPECT_EQ(lost.sign, 0);
    EXPECT_FALSE(lost.isNegative());
    EXPECT_EQ(lost.compare(big("0")), 1);
    EXPECT_EQ(text_of(-lost), "-1" + std::string(253, '0') + "1");
    // Numbers of different signs are subtracted, which needs no further digit.
    EXPECT_EQ(text_of(negative + big("1")), "-" + std::string(254, '9') + "8");
}
