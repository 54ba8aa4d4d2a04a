/* zorutils/platform/heap_target.h: what the private heap's C source needs to know of the target.
 *
 * Included by zorsys/dlmalloc_settings.c in front of the allocator, which asks WIN32 itself.
 */
#ifndef ZORUTILS_PLATFORM_HEAP_TARGET_H
#define ZORUTILS_PLATFORM_HEAP_TARGET_H

#ifdef _WIN32

#include <windows.h>
/* The allocator writes "static FORCEINLINE", and the system's own says "extern". */
#undef FORCEINLINE
#define FORCEINLINE __inline __attribute__((always_inline))
#define ZOR_HEAP_EXPORT __declspec(dllexport)

#else

#define _GNU_SOURCE /* mremap */
#include <time.h>
#define ZOR_HEAP_EXPORT __attribute__((visibility("default")))

/* The allocator makes its magic number of the system's tick count on Windows, of the time of day
 * elsewhere. Here it is of the tick count too. */
unsigned int zor_heap_tick_count(void);
#define time(unused) zor_heap_tick_count()

#endif

#endif
