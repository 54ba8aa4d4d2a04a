// zorutils/platform/posix/code_page_facts.h: where Windows maps a code page otherwise than ICU's
// table does: best fits, and bytes that Windows sends to the private area.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor {
namespace platform {

// `bytes` above 255 are two bytes, lead first.
struct Mapping
{
    WCHAR unit;
    unsigned short bytes;
};

struct Mappings
{
    const Mapping* first;
    size_t count;
    const Mapping* begin() const { return first; }
    const Mapping* end() const { return first + count; }
};

// From a unit to its bytes; "?" for what the page lacks.
Mappings unit_facts(UINT page);

// From a single byte to its unit.
Mappings byte_facts(UINT page);

} // namespace platform
} // namespace zor
