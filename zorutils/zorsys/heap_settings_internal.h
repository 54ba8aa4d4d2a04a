/* zorutils/zorsys/heap_settings_internal.h: the private heap's settings, for its tests. C and C++.
 */
#ifndef ZORUTILS_ZORSYS_HEAP_SETTINGS_INTERNAL_H
#define ZORUTILS_ZORSYS_HEAP_SETTINGS_INTERNAL_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

struct zor_heap_settings
{
    size_t page_size;
    size_t granularity;
    size_t mmap_threshold;
    size_t trim_threshold;
    unsigned int flags; /* 1 mapping, 2 locks, 4 non-contiguous growth */
    size_t magic;
};

/* The settings as the allocator has them after its first use. */
struct zor_heap_settings zor_heap_settings_in_use(void);

/* Prints three lines of figures to the C error stream. */
void dlmalloc_stats(void);

#ifdef __cplusplus
}
#endif

#endif
