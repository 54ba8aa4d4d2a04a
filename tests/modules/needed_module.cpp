#include "tests/modules/test_module.h"

int zor_test_needed()
{
    return 7;
}
