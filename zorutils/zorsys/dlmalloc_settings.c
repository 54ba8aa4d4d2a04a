/* The published dlmalloc 2.8.6 with this library's settings. Its source isn't part of the library:
 * scripts/fetch_dlmalloc.sh gets it, and the build names it as ZOR_DLMALLOC_SOURCE.
 */
#include "zorutils/platform/heap_target.h"

#include <stddef.h>

/* The allocator as its author published it, without what the package that carries it has added. */
#define __wasilibc_unmodified_upstream 1

#define USE_DL_PREFIX
#define USE_LOCKS 1
#define USE_SPIN_LOCKS 1
#define HAVE_MORECORE 0 /* grows by mappings that needn't adjoin */
#define HAVE_MMAP 1
#define MSPACES 0
#define DEFAULT_GRANULARITY ((size_t)0x400000)
#define DEFAULT_TRIM_THRESHOLD ((size_t)0x200000)
/* No request takes a mapping of its own: all ones in 32 bits, and so in the width of a size here.
 */
#define DEFAULT_MMAP_THRESHOLD (~(size_t)0)

/* What hosts may call; all else of the allocator stays inside the library. */
struct mallinfo;
ZOR_HEAP_EXPORT extern void* dlmalloc(size_t);
ZOR_HEAP_EXPORT extern void* dlcalloc(size_t, size_t);
ZOR_HEAP_EXPORT extern void* dlrealloc(void*, size_t);
ZOR_HEAP_EXPORT extern void dlfree(void*);
ZOR_HEAP_EXPORT extern struct mallinfo dlmallinfo(void);

#include ZOR_DLMALLOC_SOURCE

#include "zorutils/zorsys/heap_settings_internal.h"

struct zor_heap_settings zor_heap_settings_in_use(void)
{
    struct zor_heap_settings settings;
    ensure_initialization();
    settings.page_size = mparams.page_size;
    settings.granularity = mparams.granularity;
    settings.mmap_threshold = mparams.mmap_threshold;
    settings.trim_threshold = mparams.trim_threshold;
    settings.flags = mparams.default_mflags;
    settings.magic = mparams.magic;
    return settings;
}
