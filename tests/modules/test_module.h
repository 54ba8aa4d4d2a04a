// tests/modules/test_module.h: what the tests' libraries export.
#pragma once

#include "zorutils/platform/target.h"

extern "C" {
ZOR_EXPORT int zor_test_answer();      // 42, of test_module
ZOR_EXPORT int zor_test_sum(int, int); // of test_module
ZOR_EXPORT int zor_test_needed();      // of needed_module
ZOR_EXPORT int zor_test_needing();     // of needing_module, which needs needed_module
}
