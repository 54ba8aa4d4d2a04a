// The 64-bit way of counting a name up, and counting when memory runs out.
#include "zorutils/formats/point_names_internal.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>

#include "tests/support/failing_allocation.h"
#include "tests/support/text.h"
#include "zorutils/formats/point_names.h"

using zor_test::shown;
using zor_test::Wide;

TEST(PointNamesInt64, CountsWithTheLimitsOfAMachineInteger)
{
    const struct
    {
        const char* name;
        int increment;
        bool result;
        const char* next;
    } cases[] = {
        {"P9", 0, false, "P9"},
        {"P9", 1, true, "P10"},
        {"P09", 1, true, "P10"},
        {"A010", -1, true, "A009"}, // the width is kept downward too
        {"A10", -1, true, "A9"},
        {"AB000", 10, true, "AB010"},
        {"007", 993, true, "1000"},
        {"ABC", 1, true, "ABC1"},
        {"ABC", -1, true, "ABC-1"},
        {"", 5, true, "5"},
        {"0", -1, false, "0"},
        {"P5", -6, false, "P5"},
        {"999999999999999999", 1, true, "1000000000000000000"},
        // The head of a longer run is frozen.
        {"1999999999999999999", 1, true, "11000000000000000000"},
        {"1099999999999999999", 1, true, "1100000000000000000"},
        {"5000000000000000000", -1, false, "5000000000000000000"},
        {"P2147483647", INT_MIN, false, "P2147483647"},
        {"P2147483648", INT_MIN, true, "P0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " and " + std::to_string(c.increment));
        Wide name(c.name);
        EXPECT_EQ(zor_formats::IncPtnoInt64(name, c.increment), c.result);
        EXPECT_EQ(shown(name), c.next);
    }
}

// Each allocation fails once; the name is then as it was.
template <class Count>
void expect_whole_names(Count count, const char* before, const char* after)
{
    for (bool shared : {false, true}) {
        Wide name(before);
        const Wide other = shared ? name : Wide();
        zor_test::for_each_failing_allocation(
            [&] {
                try {
                    count(name);
                } catch (const std::bad_alloc&) {
                }
            },
            [&](int n, bool failed) {
                EXPECT_EQ(shown(name), failed ? before : after) << n;
                EXPECT_EQ(shown(other), shared ? before : "");
            });
    }
}

TEST(PointNamesMemory, AFailedAllocationLeavesTheNameAsItWas)
{
    const auto count = [](Wide& name) { EXPECT_TRUE(zor_formats::DoIncPtno(name, 1)); };
    expect_whole_names(count, "STA0099", "STA0100");
    expect_whole_names(count, "ABC", "ABC1");
    expect_whole_names(count, "99", "100");
    const auto count64 = [](Wide& name) { EXPECT_TRUE(zor_formats::IncPtnoInt64(name, 1)); };
    expect_whole_names(count64, "STA0099", "STA0100");
    expect_whole_names(count64, "ABC", "ABC1");
}
