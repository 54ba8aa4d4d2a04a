// tests/support/zone.h: the time zone that a test program was started in.
//
// A zone can't be changed in a running process on every target, so the build runs the programs once
// more per zone, with the zone in TZ and in ZOR_TEST_ZONE and a filter for the suites "Zone*". Each
// of these suites skips itself in other runs:
//
//     class ZonePrague : public testing::Test { void SetUp() override {
//     ZOR_NEEDS_ZONE("Europe/Prague"); } };
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace zor_test {

// Whether the program runs in the zone `name`. Times may be converted only after the first call.
bool in_zone(const std::string& name);

} // namespace zor_test

#define ZOR_NEEDS_ZONE(name)                                                                       \
    if (!zor_test::in_zone(name))                                                                  \
    GTEST_SKIP() << "runs with TZ and ZOR_TEST_ZONE set to " << name
