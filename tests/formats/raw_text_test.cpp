// Text to C streams, and bytes.
#include "zorutils/formats/raw_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

// What `write` puts into a new file; its result goes to `result`.
template <class Write>
std::string written(Write write, bool& result)
{
    const zor_test::TempFolder folder;
    FILE* const file = fopen((folder / "out.bin").string().c_str(), "wb");
    result = write(file);
    fclose(file);
    return folder.read("out.bin");
}

} // namespace

TEST(WriteText, NarrowThroughTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    bool result = false;
    EXPECT_EQ(written([](FILE* file) { return WriteString(file, ZOR_W("a\u00e9\r\n")); }, result),
              "a\xe9\r\n");
    EXPECT_TRUE(result);
    EXPECT_EQ(written([](FILE* file) { return WriteString(file, ZOR_W("")); }, result), "");
    EXPECT_TRUE(result);
    EXPECT_EQ(written([](FILE* file) { return WriteString(file, Wide(ZOR_W("a\0b"), 3)); }, result),
              "a");
    EXPECT_TRUE(result);
}

TEST(WriteText, WideWithMarkAndWithoutTerminator)
{
    bool result = false;
    EXPECT_EQ(written([](FILE* file) { return WriteUTF16BOM(file); }, result), "\xff\xfe");
    EXPECT_TRUE(result);
    EXPECT_EQ(
        written([](FILE* file) { return WriteUTF16String(file, Wide(ZOR_W("a\0\u0141"), 3)); },
                result),
        std::string("a\0\0\0\x41\x01", 6));
    EXPECT_TRUE(result);
    EXPECT_EQ(written([](FILE* file) { return WriteUTF16String(file, ZOR_W("")); }, result), "");
    EXPECT_TRUE(result);
}

TEST(WriteText, AStreamThatTakesNothingIsAFailure)
{
    const zor_test::TempFolder folder;
    folder.write("in.bin", "abc");
    FILE* const file = fopen((folder / "in.bin").string().c_str(), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(WriteString(file, ZOR_W("a")));
    EXPECT_FALSE(WriteUTF16String(file, ZOR_W("a")));
    EXPECT_FALSE(WriteUTF16BOM(file));
    // Nothing is nothing missed.
    EXPECT_TRUE(WriteString(file, ZOR_W("")));
    EXPECT_TRUE(WriteUTF16String(file, ZOR_W("")));
    fclose(file);
}

TEST(String2ASCII, TakesLowBytesUpToTheSmallerLengthAndAZero)
{
    const struct
    {
        int source_length, target_length;
        std::string target; // of six bytes, "#" where untouched
    } cases[] = {
        {4, 4, std::string("aAc\xe9\0#", 6)},
        {4, 5, std::string("aAc\xe9\0#", 6)},
        {5, 4, std::string("aAc\xe9\0#", 6)},
        {2, 4, std::string("aA\0###", 6)},
        {4, 2, std::string("aA\0###", 6)},
        {0, 4, std::string("\0#####", 6)},
        {4, 0, std::string("\0#####", 6)},
        // Past the terminator, which is a unit like others.
        {5, 5, std::string("aAc\xe9\0\0", 6)},
    };
    for (const auto& c : cases) {
        std::string target(6, '#');
        String2ASCII(ZOR_W("a\u0141c\u00e9"), c.source_length, target.data(), c.target_length);
        EXPECT_EQ(target, c.target) << c.source_length << " " << c.target_length;
    }
}

TEST(String2ASCII, ANegativeLengthWritesItsZeroInFrontOfTheTarget)
{
    std::string block(4, '#');
    String2ASCII(ZOR_W("abc"), -1, block.data() + 2, 2);
    EXPECT_EQ(block, std::string("#\0##", 4));
}

TEST(BinToStr, TwoDigitsPerByteWithBlanksBetween)
{
    const unsigned char bytes[] = {0x00, 0xAB, 0x7F, 0xFF, 0x10};
    EXPECT_EQ(shown(bin_to_str(bytes, 2)), "00 AB");
    EXPECT_EQ(shown(bin_to_str(bytes, 1)), "00");
    EXPECT_EQ(shown(bin_to_str(bytes, 5)), "00 AB 7F FF 10");
    EXPECT_EQ(shown(bin_to_str(bytes, 0)), "");
    EXPECT_EQ(shown(bin_to_str(bytes, -1)), "");
    EXPECT_EQ(shown(bin_to_str(nullptr, 0)), "");
    const std::vector<unsigned char> many(10000, 0x5A);
    const std::string text = shown(bin_to_str(many.data(), 10000));
    EXPECT_EQ(text.size(), 29999u);
    EXPECT_EQ(text.substr(text.size() - 6), " 5A 5A");
    EXPECT_THROW(bin_to_str(bytes, INT_MAX), std::bad_alloc);
}

TEST(IntToInt, CopiesBetweenWidths)
{
    const struct
    {
        std::string source;
        int target_size;
        bool target_flag, source_flag;
        std::string target; // of five bytes, "#" where untouched
    } cases[] = {
        {"\x80", 4, false, false, "\x80\xff\xff\xff#"},
        {"\x80", 4, true, false, std::string("\x80\0\0\0#", 5)},
        {"\x80", 4, false, true, std::string("\x80\0\0\0#", 5)},
        {"\x80", 4, true, true, std::string("\x80\0\0\0#", 5)},
        {"\x7f", 4, false, false, std::string("\x7f\0\0\0#", 5)},
        {"\x80", 1, false, false, "\x80####"},
        // The low part.
        {"\x01\x02\x03\x04", 2, false, false, "\x01\x02###"},
        {"\x01\x02\x03\x04", 4, false, false, "\x01\x02\x03\x04#"},
        {"\x01\x02\x03\x04", 0, false, false, "#####"},
        // The first byte decides, not the last.
        {"\x80\x01", 4, false, false, "\x80\x01\xff\xff#"},
        {"\x01\x80", 4, false, false, std::string("\x01\x80\0\0#", 5)},
        {"\xfe\xff\xff", 5, false, false, "\xfe\xff\xff\xff\xff"},
    };
    for (const auto& c : cases) {
        std::string target(5, '#');
        int_to_int(reinterpret_cast<unsigned char*>(target.data()), c.target_size, c.target_flag,
                   reinterpret_cast<const unsigned char*>(c.source.data()),
                   static_cast<int>(c.source.size()), c.source_flag);
        EXPECT_EQ(shown(target.data(), 5), shown(c.target.data(), 5)) << shown(c.source.c_str());
    }
    std::string target(4, '#');
    int_to_int(reinterpret_cast<unsigned char*>(target.data()), 3, false, nullptr, 0, false);
    EXPECT_EQ(target, std::string("\0\0\0#", 4));
}
