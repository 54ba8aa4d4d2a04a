#include "tests/support/zone.h"

#include <stdlib.h>
#include <time.h>

// TZ has told the system underneath which zone to use; the run-time would read it in another
// syntax.
static void hide_zone_from_runtime()
{
    _putenv("TZ=");
    _tzset();
}

bool zor_test::in_zone(const std::string& name)
{
    static const bool hidden = (hide_zone_from_runtime(), true);
    const char* zone = getenv("ZOR_TEST_ZONE");
    return hidden && zone && name == zone;
}
