// tests/formats/double_bits.h: doubles compared bit for bit.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

inline uint64_t bits_of(double value)
{
    uint64_t bits;
    memcpy(&bits, &value, sizeof bits);
    return bits;
}

// The same double: signed zeros differ, a NaN equals itself.
inline testing::AssertionResult same_double(double actual, double expected)
{
    if (bits_of(actual) == bits_of(expected))
        return testing::AssertionSuccess();
    char text[120];
    snprintf(text, sizeof text, "%.17g (%a), expected %.17g (%a)", actual, actual, expected,
             expected);
    return testing::AssertionFailure() << text;
}

#define EXPECT_SAME_DOUBLE(actual, expected) EXPECT_TRUE(same_double(actual, expected))
