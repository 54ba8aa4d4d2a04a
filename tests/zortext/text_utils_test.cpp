// Encoding detection: every mark, its order, and the guess without one.
#include "zorutils/zortext/text_utils.h"

#include <gtest/gtest.h>

#include <string>

using namespace zor::text_utils;

namespace {

struct Detected
{
    int result;
    unsigned int length;
};

// The bytes lie at the end of a block of their own, so that a checker sees any read behind them.
Detected bom(const std::string& bytes)
{
    std::string copy = bytes;
    unsigned int length = 77;
    const auto result = detect_bom_header(reinterpret_cast<unsigned char*>(copy.data()),
                                          static_cast<unsigned int>(copy.size()), &length);
    return {result, length};
}

Detected encoding(const std::string& bytes)
{
    std::string copy = bytes;
    unsigned int length = 77;
    const auto result =
        detect_text_encoding(copy.data(), static_cast<unsigned int>(copy.size()), &length);
    return {result, length};
}

std::string bytes(std::initializer_list<int> values)
{
    std::string out;
    for (int value : values)
        out += static_cast<char>(value);
    return out;
}

} // namespace

TEST(TextEncoding, NumbersAreThoseOfTheInterface)
{
    EXPECT_EQ(BOM_NONE, 0);
    EXPECT_EQ(BOM_UTF8, 1);
    EXPECT_EQ(BOM_UTF16_BE, 2);
    EXPECT_EQ(BOM_UTF16_LE, 3);
    EXPECT_EQ(BOM_UTF32_BE, 4);
    EXPECT_EQ(BOM_UTF32_LE, 5);
    EXPECT_EQ(BOM_SCSU, 6);
    EXPECT_EQ(BOM_UTF7, 7);
    EXPECT_EQ(BOM_UTF_EBCDIC, 8);
    EXPECT_EQ(BOM_BOCU1, 9);
    EXPECT_EQ(TEXT_ENCODING_UNKNOWN, 0);
    EXPECT_EQ(TEXT_ENCODING_ANSI, 1);
    EXPECT_EQ(TEXT_ENCODING_UTF16, 2);
}

TEST(TextEncoding, EveryMarkIsFoundWithItsLength)
{
    const struct
    {
        std::string data;
        int result;
        unsigned int length;
    } rows[] = {
        {bytes({0xFF, 0xFE, 0, 0}), BOM_UTF32_LE, 4},
        {bytes({0xFF, 0xFE, 0, 0, 1}), BOM_UTF32_LE, 4},
        {bytes({0xFF, 0xFE}), BOM_UTF16_LE, 2},
        {bytes({0xFF, 0xFE, 0}), BOM_UTF16_LE, 2},
        {bytes({0xFF, 0xFE, 'a', 0}), BOM_UTF16_LE, 2},
        {bytes({0xEF, 0xBB, 0xBF}), BOM_UTF8, 3},
        {bytes({0x2B, 0x2F, 0x76, 0x38}), BOM_UTF7, 3},
        {bytes({0x2B, 0x2F, 0x76, 0x39}), BOM_UTF7, 3},
        {bytes({0x2B, 0x2F, 0x76, 0x2B}), BOM_UTF7, 3},
        {bytes({0x2B, 0x2F, 0x76, 0x2F}), BOM_UTF7, 3},
        {bytes({0x2B, 0x2F, 0x76, 0x41}), BOM_NONE, 77},
        {bytes({0x2B, 0x2F, 0x76}), BOM_NONE, 77},
        {bytes({0xFE, 0xFF}), BOM_UTF16_BE, 2},
        {bytes({0, 0, 0xFE, 0xFF}), BOM_UTF32_BE, 4},
        {bytes({0xFB, 0xEE, 0x28}), BOM_BOCU1, 3},
        {bytes({0x0E, 0xFE, 0xFF}), BOM_SCSU, 3},
        {bytes({0xDD, 0x73, 0x66, 0x73}), BOM_UTF_EBCDIC, 4},
        {bytes({0xDD, 0x73, 0x66}), BOM_NONE, 77},
        {bytes({0xEF, 0xBB}), BOM_NONE, 77},
        {"", BOM_NONE, 77},
        {"abc", BOM_NONE, 77},
    };
    for (const auto& row : rows) {
        const Detected detected = bom(row.data);
        EXPECT_EQ(detected.result, row.result) << testing::PrintToString(row.data);
        EXPECT_EQ(detected.length, row.length) << testing::PrintToString(row.data);
    }
}

TEST(TextEncoding, AMarkDecidesAloneAndOnlyOneIsRead)
{
    const struct
    {
        std::string data;
        int result;
        unsigned int length;
    } rows[] = {
        {bytes({0xFF, 0xFE}), TEXT_ENCODING_UTF16, 2},
        {bytes({0xFF, 0xFE, 0, 0}), TEXT_ENCODING_UNKNOWN, 4},
        {bytes({0xEF, 0xBB, 0xBF}), TEXT_ENCODING_UNKNOWN, 3},
        {bytes({0xEF, 0xBB, 0xBF}) + "plain bytes", TEXT_ENCODING_UNKNOWN, 3},
        {bytes({0xFE, 0xFF}), TEXT_ENCODING_UNKNOWN, 2},
        {bytes({0, 0, 0xFE, 0xFF}), TEXT_ENCODING_UNKNOWN, 4},
        {bytes({0x2B, 0x2F, 0x76, 0x38}), TEXT_ENCODING_UNKNOWN, 3},
    };
    for (const auto& row : rows) {
        const Detected detected = encoding(row.data);
        EXPECT_EQ(detected.result, row.result) << testing::PrintToString(row.data);
        EXPECT_EQ(detected.length, row.length) << testing::PrintToString(row.data);
    }
}

TEST(TextEncoding, WithoutAMarkTheFirstEightBytesOfNineDecide)
{
    const struct
    {
        std::string data;
        int result;
    } rows[] = {
        {"", TEXT_ENCODING_UNKNOWN},
        {"a", TEXT_ENCODING_UNKNOWN},
        {"ab", TEXT_ENCODING_ANSI},
        {bytes({'A', 0, 'B', 0, 'C', 0, 'D', 0, 'E'}), TEXT_ENCODING_UTF16},
        {bytes({'A', 0, 'B', 0, 'C', 0, 'D', 0}), TEXT_ENCODING_ANSI},
        {bytes({'A', 1, 'B', 0, 'C', 0, 'D', 0, 'E'}), TEXT_ENCODING_ANSI},
        {bytes({'A', 0, 'B', 1, 'C', 0, 'D', 0, 'E'}), TEXT_ENCODING_ANSI},
        {bytes({'A', 0, 'B', 0, 'C', 1, 'D', 0, 'E'}), TEXT_ENCODING_ANSI},
        {bytes({'A', 0, 'B', 0, 'C', 0, 'D', 1, 'E'}), TEXT_ENCODING_ANSI},
        {bytes({0, 0, 0, 0, 0, 0, 0, 0, 0}), TEXT_ENCODING_ANSI},
        {bytes({0, 0, 0, 0, 0, 0, 7, 0, 0}), TEXT_ENCODING_UTF16},
        {bytes({0, 0, 0, 0, 0, 0, 0, 0, 7, 7}), TEXT_ENCODING_ANSI},
        {bytes({0, 'A', 0, 'B', 0, 'C', 0, 'D', 0, 'E'}), TEXT_ENCODING_ANSI},
        {"plain bytes", TEXT_ENCODING_ANSI},
    };
    for (const auto& row : rows) {
        const Detected detected = encoding(row.data);
        EXPECT_EQ(detected.result, row.result) << testing::PrintToString(row.data);
        EXPECT_EQ(detected.length, 77u) << testing::PrintToString(row.data);
    }
}

TEST(TextEncoding, NullDataAndNullLengthAreTaken)
{
    unsigned int length = 77;
    EXPECT_EQ(detect_bom_header(nullptr, 10, &length), BOM_NONE);
    EXPECT_EQ(detect_text_encoding(nullptr, 10, &length), TEXT_ENCODING_UNKNOWN);
    EXPECT_EQ(length, 77u);
    std::string mark = bytes({0xFF, 0xFE});
    EXPECT_EQ(detect_bom_header(reinterpret_cast<unsigned char*>(mark.data()), 2, nullptr),
              BOM_UTF16_LE);
    EXPECT_EQ(detect_text_encoding(mark.data(), 2, nullptr), TEXT_ENCODING_UTF16);
}
