// zorutils/platform/interlocked.h: the atomic operations on plain 32-bit words that stand in
// exported blocks, where std::atomic would change the layout.
//
// All are full barriers, but for the load (acquire) and the store (release).
#pragma once

#include "zorutils/platform/target.h"

namespace zor {
namespace platform {

// Adds 1 and returns the new value.
inline LONG interlocked_increment(LONG* word)
{
    return __atomic_add_fetch(word, 1, __ATOMIC_SEQ_CST);
}

// Subtracts 1 and returns the new value.
inline LONG interlocked_decrement(LONG* word)
{
    return __atomic_sub_fetch(word, 1, __ATOMIC_SEQ_CST);
}

inline LONG interlocked_load(const LONG* word)
{
    return __atomic_load_n(word, __ATOMIC_ACQUIRE);
}

inline void interlocked_store(LONG* word, LONG value)
{
    __atomic_store_n(word, value, __ATOMIC_RELEASE);
}

// Stores `value` if the word is `expected`; the word's earlier value.
inline LONG interlocked_exchange_if(LONG* word, LONG expected, LONG value)
{
    __atomic_compare_exchange_n(word, &expected, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return expected;
}

} // namespace platform
} // namespace zor
