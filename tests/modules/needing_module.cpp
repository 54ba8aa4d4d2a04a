#include "tests/modules/test_module.h"

int zor_test_needing()
{
    return zor_test_needed();
}
