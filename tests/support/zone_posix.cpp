#include "tests/support/zone.h"

#include <stdlib.h>

bool zor_test::in_zone(const std::string& name)
{
    const char* zone = getenv("ZOR_TEST_ZONE");
    return zone && name == zone;
}
