#include "tests/modules/test_module.h"

int zor_test_answer()
{
    return 42;
}

int zor_test_sum(int a, int b)
{
    return a + b;
}
