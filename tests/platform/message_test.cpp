#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

#include <limits.h>
#include <stdarg.h>
#include <string>

namespace {

using Text = std::basic_string<WCHAR>;

constexpr DWORD no_work_done = 235;
constexpr DWORD allocated_from_string = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_STRING;

// What a call gave: its text, or the last error if it returned 0.
struct Result
{
    Text text;
    DWORD length;
    DWORD error;
};

Result message(const WCHAR* format, ...)
{
    WCHAR sentinel = 0;
    WCHAR* out = &sentinel;
    va_list arguments;
    va_start(arguments, format);
    SetLastError(NO_ERROR);
    const DWORD length = FormatMessageW(allocated_from_string, format, 0, 0,
                                        reinterpret_cast<LPWSTR>(&out), 0, &arguments);
    const DWORD error = GetLastError();
    va_end(arguments);
    Result result = {Text(), length, error};
    if (length) {
        EXPECT_EQ(out[length], 0);
        result.text.assign(out, length);
        LocalFree(out);
    } else {
        EXPECT_EQ(out, nullptr);
    }
    return result;
}

Result in_buffer(WCHAR* buffer, DWORD size, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    SetLastError(NO_ERROR);
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_STRING, format, 0, 0, buffer, size, &arguments);
    const DWORD error = GetLastError();
    va_end(arguments);
    return {size ? Text(buffer) : Text(), length, error};
}

#define W(text) ZOR_W(text)
#define EXPECT_MESSAGE(expected, ...) EXPECT_EQ(message(__VA_ARGS__).text, Text(W(expected)))

TEST(FormatMessage, CopiesPlainTextAndLeavesTheLastError)
{
    const Result result = message(W("plain"));
    EXPECT_EQ(result.text, W("plain"));
    EXPECT_EQ(result.length, 5u);
    EXPECT_EQ(result.error, DWORD(NO_ERROR));
}

TEST(FormatMessage, PutsInsertsByNumber)
{
    EXPECT_MESSAGE("a and b", W("%1 and %2"), W("a"), W("b"));
    EXPECT_MESSAGE("b and a", W("%2 and %1"), W("a"), W("b"));
    EXPECT_MESSAGE("c a", W("%3 %1"), W("a"), W("b"), W("c"));
    EXPECT_MESSAGE("a a a", W("%1 %1 %1"), W("a"));
    EXPECT_MESSAGE("AaBb3", W("%1a%2b3"), W("A"), W("B"));
    EXPECT_MESSAGE("\u00E9\u0107\u20AC", W("\u00E9%1\u20AC"), W("\u0107"));
}

TEST(FormatMessage, TakesAtMostTwoDigitsOfANumber)
{
    const WCHAR* t[] = {W("1"), W("2"), W("3"), W("4"), W("5"),
                        W("6"), W("7"), W("8"), W("9"), W("t")};
    EXPECT_MESSAGE("t|", W("%10|"), t[0], t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], t[9]);
    EXPECT_MESSAGE("t1|", W("%101|"), t[0], t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], t[9]);
}

TEST(FormatMessage, WritesNullTextsAsAWord)
{
    EXPECT_MESSAGE("(null)", W("%1"), nullptr);
    EXPECT_MESSAGE("(null)", W("%1!s!"), nullptr);
    EXPECT_MESSAGE("(null)", W("%1!S!"), nullptr);
}

struct IntegerCase
{
    const WCHAR* format;
    int value;
    const WCHAR* expected;
};

class FormatMessageInteger : public testing::TestWithParam<IntegerCase>
{
};

TEST_P(FormatMessageInteger, IsConverted)
{
    ZOR_NEEDS_PAGE_1252();
    EXPECT_EQ(message(GetParam().format, GetParam().value).text, Text(GetParam().expected));
}

const IntegerCase integer_cases[] = {
    {W("%1!d!"), 42, W("42")},
    {W("%1!i!"), -3, W("-3")},
    {W("%1!d! %1!u! %1!x!"), -7, W("-7 4294967289 fffffff9")},
    {W("%1!x! %1!X! %1!o!"), 255, W("ff FF 377")},
    {W("%1!5d!|"), 42, W("   42|")},
    {W("%1!-5d!|"), 42, W("42   |")},
    {W("%1!05d!|"), 42, W("00042|")},
    {W("%1!005d!|"), 7, W("00007|")},
    {W("%1!+d!|"), 42, W("+42|")},
    {W("%1! d!|"), 5, W(" 5|")},
    {W("%1!+-5d!|"), 7, W("+7   |")},
    {W("%1!+05d!|%1! 05d!|"), 7, W("+0007| 0007|")},
    {W("%1!+u! %1! u! %1!+x!"), 7, W("7 7 7")},
    {W("%1!+.3d! %1! .3d! %1!+ d!"), 7, W("+007  007 +7")},
    {W("%1!-05d!|"), 7, W("7    |")},
    {W("%1!#x! %1!#o!"), 8, W("0x8 010")},
    {W("%1!#X! %1!#.5x! %1!8.5x! %1!-8.5x!|"), 0xABC, W("0XABC 0x00abc    00abc 00abc   |")},
    {W("%1!.0d!|%1!.0x!|%1!#x!|%1!#o!"), 0, W("||0|0")},
    {W("%1!ld!"), 70000, W("70000")},
    {W("%1!lu!"), -1, W("4294967295")},
    {W("%1!hd!"), 70000, W("4464")},
    {W("%1!hu!"), -1, W("65535")},
    {W("%1!hhd!"), 300, W("300")},
    {W("%1!I32d!"), 70000, W("70000")},
    {W("%1!wd! %1!Ld! %1!zd! %1!jd! %1!td!"), 3, W("3 3 3 3 3")},
    {W("%1!c!|%1!5c!|%1!-5c!|"), 'x', W("x|    x|x    |")},
    {W("%1!.0c!|"), 'x', W("|")},
    {W("%1!c!|"), 0x20AC, W("\u20AC|")},
    {W("%1!hc!%1!C!%1!lc!%1!wc!"), 'a', W("aaaa")},
    {W("%1!hc!|"), 0xE9, W("\u00E9|")},
    // What follows the conversion is text, and may hold conversions that have no value.
    {W("%1!d5!|"), 7, W("75|")},
    {W("%1!d x!|"), 7, W("7 x|")},
    {W("%1!d%d!|"), 7, W("70|")},
    {W("%1!%d!"), 7, W("%d")},
    {W("%1!%%d!"), 7, W("%7")},
    {W("%1!% d!"), 7, W("% d")},
    // What isn't a conversion of the system's stands for itself, real numbers included.
    {W("%1!f!%1!.2f!%1!e!%1!E!%1!g!%1!G!%1!a!%1!A!"), 3, W("ffeEgGaA")},
    {W("%1!z!%1!t!%1!I!%1!5z!%1!zy!"), 3, W("ztIzzy")},
    {W("%1!j!%1!L!%1!w!%1!F!|"), 3, W("|")},
    {W("%1!zx!|%1!lzd!|%1!zzd!|%1!zld!|"), 3, W("3|3|zzd|zld|")},
    {W("%1!y!|"), 3, W("y|")},
    {W("%1!qd!"), 3, W("qd")},
    {W("%1!D!%1!U!%1!O!%1!Z!%1!P!"), 3, W("DUOZP")},
    {W("%1!I3d!"), 3, W("I3d")},
    {W("%1!l!|%1!h!|%1!5!|"), 3, W("|||")},
    {W("%1!\u20ACd!|"), 3, W("\u20ACd|")},
    {W("%1!'d!|"), 3, W("'d|")},
    {W("%1!0000000000000000005d!|"), 3, W("00003|")},
};
INSTANTIATE_TEST_SUITE_P(Cases, FormatMessageInteger, testing::ValuesIn(integer_cases));

TEST(FormatMessage, ConvertsWiderIntegers)
{
    const INT64 value = INT64(1) << 40;
    EXPECT_MESSAGE("1099511627776", W("%1!I64d!"), value);
    EXPECT_MESSAGE("1099511627776", W("%1!Id!"), value);
    EXPECT_MESSAGE("1099511627776", W("%1!lld!"), value);
    EXPECT_MESSAGE("1099511627776 1099511627776 1099511627776 0", W("%1!zd! %1!jd! %1!td! %1!Ld!"),
                   value);
    EXPECT_MESSAGE("18446744073709551615", W("%1!llu!"), INT64(-1));
    EXPECT_MESSAGE("10000000000 q", W("%1!I64x! %2"), value, W("q"));
    EXPECT_MESSAGE("7 8589934592", W("%2!d! %1!I64d!"), INT64(1) << 33, 7);
    EXPECT_MESSAGE("-5 7 e", W("%1!I64d! %2!d! %3"), INT64(-5), 7, W("e"));
}

TEST(FormatMessage, WritesPointersInFullWidth)
{
    const auto* pointer = reinterpret_cast<const void*>(uintptr_t(0xABC));
    EXPECT_MESSAGE("0000000000000ABC|0000000000000ABC|0X0000000000000ABC", W("%1!p!|%1!8p!|%1!#p!"),
                   pointer);
}

TEST(FormatMessage, ConvertsTexts)
{
    ZOR_NEEDS_PAGE_1252();
    EXPECT_MESSAGE("x", W("%1!s!"), W("x"));
    EXPECT_MESSAGE("x!", W("%1!s!!"), W("x"));
    EXPECT_MESSAGE("x x zs ts zS", W("%1!js! %1!Ls! %1!zs! %1!ts! %1!zS!"), W("x"));
    EXPECT_MESSAGE("wide w2", W("%1!ls! %2!ws!"), W("wide"), W("w2"));
    EXPECT_MESSAGE("narrow narrow", W("%1!S! %1!hs!"), "narrow");
    EXPECT_MESSAGE("narrow wide", W("%1!hS! %2!lS!"), "narrow", W("wide"));
    EXPECT_MESSAGE("\u00E9|", W("%1!S!|"), "\xE9");
    EXPECT_MESSAGE("a\u20ACb|", W("%1!S!|"),
                   "a\x80"
                   "b");
    EXPECT_MESSAGE("\u20AC\u20AC|", W("%1!.2hs!|"), "\x80\x80\x80");
    EXPECT_MESSAGE("\u20AC\u20AC|", W("%1!C!%1!hc!|"), 0x80);
    EXPECT_MESSAGE("   ab||", W("%1!5.2s!|%1!.s!|"), W("abc"));
    EXPECT_MESSAGE("       abc|abc       |0000000abc", W("%1!10s!|%1!-10s!|%1!010s!"), W("abc"));
    EXPECT_MESSAGE("       abc|ab        |", W("%1!10S!|%1!-10.2S!|"), "abc");
    EXPECT_MESSAGE("a\nb", W("%1"), W("a\nb"));
    EXPECT_MESSAGE("%2", W("%1"), W("%2"));
}

TEST(FormatMessage, CountsAZeroUnitOfAnInsert)
{
    const Result result = message(W("a%1!c!b"), 0);
    EXPECT_EQ(result.length, 3u);
    EXPECT_EQ(result.text, Text(W("a\0b"), 3));
}

TEST(FormatMessage, TakesWidthAndPrecisionFromArguments)
{
    EXPECT_MESSAGE("    42|", W("%1!*d!|"), 6, 42);
    EXPECT_MESSAGE("00004|", W("%1!0*d!|"), 5, 4);
    EXPECT_MESSAGE("4    |", W("%1!-*d!|"), 5, 4);
    EXPECT_MESSAGE("4    |", W("%1!*d!|"), -5, 4);
    EXPECT_MESSAGE("4|", W("%1!.*d!|"), -5, 4);
    EXPECT_MESSAGE("abc|", W("%1!.*s!|"), -1, W("abc"));
    EXPECT_MESSAGE("     abc|first", W("%2!*.*s!|%1"), W("first"), 8, 3, W("abcdef"));
}

// Required: behind a "*" the value has the number of the last "*", so that what follows counts one
// less than the arguments given.
TEST(FormatMessage, CountsOneArgumentLessAfterAStar)
{
    EXPECT_MESSAGE("     abc|d", W("%1!*.*s!|%3"), 8, 3, W("abcdef"), W("d"));
    EXPECT_MESSAGE("     abc|abcdef", W("%1!*.*s!|%2"), 8, 3, W("abcdef"), W("d"));
    EXPECT_MESSAGE("ab|n", W("%1!.*s!|%2"), 2, W("abc"), W("n"));
    EXPECT_MESSAGE("    42|y", W("%1!*d!|%3"), 6, 42, W("z"), W("y"));
    EXPECT_MESSAGE("a     42|z|", W("%1 %2!*d!|%3|"), W("a"), 6, 42, W("z"));
}

TEST(FormatMessage, KnowsAStarOnlyInItsPlace)
{
    EXPECT_MESSAGE("*d|", W("%1!**d!|"), 3, 4, 5);
    EXPECT_MESSAGE("*d|", W("%1!l*d!|"), 5, 4);
    EXPECT_MESSAGE("*d|", W("%1!5*d!|"), 5, 4);
    EXPECT_MESSAGE("5d|", W("%1!*5d!|"), 5, 4);
}

struct EscapeCase
{
    const WCHAR* format;
    const WCHAR* expected;
};

class FormatMessageEscape : public testing::TestWithParam<EscapeCase>
{
};

TEST_P(FormatMessageEscape, GivesItsText)
{
    EXPECT_EQ(message(GetParam().format).text, Text(GetParam().expected));
}

const EscapeCase escape_cases[] = {
    {W("100%%"), W("100%")},
    {W("a%nb"), W("a\r\nb")},
    {W("a%rb"), W("a\rb")},
    {W("a%tb"), W("a\tb")},
    {W("a%.b"), W("a.b")},
    {W("a%!b"), W("a!b")},
    {W("a% b"), W("a b")},
    {W("a%\\b"), W("a\\b")},
    {W("a%0b"), W("a")},
    {W("a%09b"), W("a")},
    {W("%z"), W("z")},
    {W("%B%N%R%T"), W("BNRT")},
    {W("%.%.%n"), W("..\r\n")},
    {W("a!b"), W("a!b")},
    {W("\tx  y"), W("\tx  y")},
    // Every form of a line end in the format is one line end.
    {W("a\nb"), W("a\r\nb")},
    {W("a\r\nb"), W("a\r\nb")},
    {W("a\rb"), W("a\r\nb")},
    {W("a\n\rb"), W("a\r\n\r\nb")},
    {W("a\n\nb"), W("a\r\n\r\nb")},
    {W("a\r\r\nb"), W("a\r\n\r\nb")},
    {W("a\n"), W("a\r\n")},
    {W("a \n b"), W("a \r\n b")},
    {W("a %nb"), W("a \r\nb")},
};
INSTANTIATE_TEST_SUITE_P(Cases, FormatMessageEscape, testing::ValuesIn(escape_cases));

TEST(FormatMessage, RefusesABrokenFormat)
{
    const WCHAR* const formats[] = {
        W("%"),
        W("a%"),
        W("%1!"),
        W("%1!d"),
        W("%1! x"),
        W("%1!s"),
        W("%1!*.*.*d!"),
        W("%1!000000000000000000000000000005d!"),
        W("%1!dxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx!"),
    };
    for (const WCHAR* format : formats) {
        const Result result = message(format, 1, 2, 3, 4);
        EXPECT_EQ(result.length, 0u) << testing::PrintToString(Text(format));
        EXPECT_EQ(result.error, DWORD(ERROR_INVALID_PARAMETER))
            << testing::PrintToString(Text(format));
    }
}

TEST(FormatMessage, ReportsAnEmptyResult)
{
    const WCHAR* const formats[] = {W(""), W("%0"), W("%0a"), W("%1!!"), W("%1!-!"), W("%1!I64!")};
    for (const WCHAR* format : formats) {
        const Result result = message(format, W("x"));
        EXPECT_EQ(result.length, 0u);
        EXPECT_EQ(result.error, no_work_done) << testing::PrintToString(Text(format));
    }
}

TEST(FormatMessage, NeedsArgumentsOnlyForInserts)
{
    WCHAR* out = nullptr;
    const auto address = reinterpret_cast<LPWSTR>(&out);
    EXPECT_EQ(FormatMessageW(allocated_from_string, W("a"), 0, 0, address, 0, nullptr), 1u);
    LocalFree(out);
    SetLastError(NO_ERROR);
    EXPECT_EQ(FormatMessageW(allocated_from_string, W("a %1"), 0, 0, address, 0, nullptr), 0u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(FormatMessageW(allocated_from_string, W("a"), 0, 0, nullptr, 0, nullptr), 0u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
}

TEST(FormatMessage, FormatsLongTexts)
{
    const Text text(40000, u'x');
    EXPECT_EQ(message(text.c_str()).text, text);
    EXPECT_EQ(message(W("%1%1"), text.c_str()).length, 80000u);
    EXPECT_EQ(message(W("%1!400d!"), 7).text, Text(399, u' ') + Text(W("7")));
    EXPECT_EQ(message(W("%1!.400d!"), 7).text, Text(399, u'0') + Text(W("7")));
    EXPECT_EQ(message(W("%1!5000s!|"), W("zz")).length, 5001u);
}

TEST(FormatMessage, FillsTheCallersBuffer)
{
    WCHAR buffer[20];
    Result result = in_buffer(buffer, 20, W("%1 and"), W("abc"));
    EXPECT_EQ(result.text, W("abc and"));
    EXPECT_EQ(result.length, 7u);

    result = in_buffer(buffer, 4, W("%1"), W("abc"));
    EXPECT_EQ(result.length, 3u);
    EXPECT_EQ(result.text, W("abc"));
}

TEST(FormatMessage, LeavesTheBeginningInABufferTooSmall)
{
    WCHAR buffer[20];
    Result result = in_buffer(buffer, 3, W("%1"), W("abc"));
    EXPECT_EQ(result.length, 0u);
    EXPECT_EQ(result.error, DWORD(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(result.text, W("ab"));

    result = in_buffer(buffer, 0, W("abc"));
    EXPECT_EQ(result.length, 0u);
    EXPECT_EQ(result.error, DWORD(ERROR_INSUFFICIENT_BUFFER));

    result = in_buffer(buffer, 20, W(""));
    EXPECT_EQ(result.length, 0u);
    EXPECT_EQ(result.error, no_work_done);
}

TEST(LocalFree, TakesNull)
{
    EXPECT_EQ(LocalFree(nullptr), nullptr);
}

} // namespace
