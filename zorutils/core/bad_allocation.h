// zorutils/core/bad_allocation.h: std::bad_alloc with the text that the interface promises.
#pragma once

#include "zorutils/core/zor_api.h"

#include <new>

// Raised where the library itself reports a failed allocation: what() is "bad allocation" on every
// target, where a compiler's own std::bad_alloc may say something else. Catch it as std::bad_alloc.
class ZOR_API ZorBadAllocation : public std::bad_alloc
{
public:
    const char* what() const noexcept override { return "bad allocation"; }
};
