#include "zorutils/platform/posix/memory_map.h"

#include <stdlib.h>
#include <string.h>

#include "zorutils/platform/posix/system_calls.h"

namespace zor::platform {

namespace {

size_t read_text(const char* path, char* to, size_t size)
{
    const int file = system_calls().open(path, O_RDONLY | O_CLOEXEC, 0);
    if (file < 0)
        return 0;
    size_t length = 0;
    while (length < size) {
        const ssize_t read = system_calls().read(file, to + length, size - length);
        if (read <= 0)
            break;
        length += static_cast<size_t>(read);
    }
    system_calls().close(file);
    return length;
}

// "start-end rwxp offset device inode   path"
MemoryRange parse(char* line)
{
    MemoryRange range = {};
    char* at = line;
    range.start = strtoull(at, &at, 16);
    range.end = strtoull(at + 1, &at, 16);
    range.readable = at[1] == 'r';
    at += 6;
    range.file_offset = strtoull(at, &at, 16);
    strtoull(at, &at, 16); // the device, in two halves
    strtoull(at + 1, &at, 16);
    range.inode = strtoull(at, &at, 10);
    range.path = at + strspn(at, " ");
    return range;
}

} // namespace

void MemoryMap::read()
{
    count = 0;
    text_length = read_text("/proc/self/maps", text, sizeof text - 1);
    memcpy(paths, text, text_length);
    paths[text_length] = 0;
    for (char* line = paths; *line != 0 && count < most_memory_ranges;) {
        char* const end = strchr(line, '\n');
        if (end == nullptr)
            break;
        *end = 0;
        ranges[count++] = parse(line);
        line = end + 1;
    }
}

const MemoryRange* MemoryMap::find(uint64_t address) const
{
    for (size_t i = 0; i < count; ++i) {
        if (address >= ranges[i].start && address < ranges[i].end)
            return &ranges[i];
    }
    return nullptr;
}

const MemoryRange* MemoryMap::find_above(uint64_t address) const
{
    for (size_t i = 0; i < count; ++i) {
        if (ranges[i].start > address && ranges[i].readable)
            return &ranges[i];
    }
    return nullptr;
}

size_t read_memory(int memory, uint64_t address, void* to, size_t size)
{
    auto* const bytes = static_cast<char*>(to);
    size_t done = 0;
    while (done < size) {
        const ssize_t read = system_calls().pread(memory, bytes + done, size - done,
                                                  static_cast<off_t>(address + done));
        if (read <= 0)
            break;
        done += static_cast<size_t>(read);
    }
    memset(bytes + done, 0, size - done);
    return done;
}

} // namespace zor::platform
