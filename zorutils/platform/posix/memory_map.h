// zorutils/platform/posix/memory_map.h: the process's memory as the system lists it, and reading it
// without faulting. Neither takes memory or a lock.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace zor::platform {

struct MemoryRange
{
    uint64_t start, end;
    uint64_t file_offset;
    uint64_t inode;   // 0: of no file
    const char* path; // in the list's text; empty without a name
    bool readable;
};

constexpr size_t most_memory_ranges = 16384;
constexpr size_t most_map_bytes = 4 << 20;

struct MemoryMap
{
    char text[most_map_bytes]; // as the system gave it
    size_t text_length;
    char paths[most_map_bytes]; // the same, cut into texts
    MemoryRange ranges[most_memory_ranges];
    size_t count;

    void read();
    // The range that an address lies in, or null.
    const MemoryRange* find(uint64_t address) const;
    // The first readable one that begins above it, or null.
    const MemoryRange* find_above(uint64_t address) const;
};

// Reads what there is and fills the rest with zeroes; how much there was. `memory` is the
// descriptor of /proc/self/mem.
size_t read_memory(int memory, uint64_t address, void* to, size_t size);

} // namespace zor::platform
