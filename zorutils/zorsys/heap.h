// zorutils/zorsys/heap.h: allocation inside the library, and the private heap for its hosts.
#pragma once

#include "zorutils/core/zor_api.h"

#include <stddef.h>

// A block of `size` bytes from the C runtime that the library uses, to be released inside the
// library by free. Raises ZorBadAllocation, a std::bad_alloc whose text is "bad allocation". Any
// thread.
ZOR_API void* zor_operator_new(unsigned int size);
