// zorutils/platform/posix/resource_file.h: the entries of a compiled .res file or a PE module.
#pragma once

#include "zorutils/platform/win_types.h"

#include <vector>

namespace zor::platform {

// One entry; its data lies in the bytes that were read.
struct ResourceEntry
{
    WORD type;
    WORD name;
    WORD language;
    const BYTE* data;
    DWORD size;
};

// Lists the entries of numbered type and name in `bytes`, which must outlive them. False, and no
// entries, if the bytes are of neither format, or any offset, length or count in them leads
// outside.
bool read_resources(const std::vector<BYTE>& bytes, std::vector<ResourceEntry>& entries);

} // namespace zor::platform
