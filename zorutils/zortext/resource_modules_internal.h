// zorutils/zortext/resource_modules_internal.h: lookup of a string resource, for the string.
#pragma once

#include "zorutils/platform/target.h"

namespace zor_text {

// An entry inside its module's memory, without a zero unit behind it.
struct StringEntry
{
    const WCHAR* text;
    unsigned int length;
};

// The entry `id` of the first module on the list where it isn't empty; {null, 0} if there is none.
StringEntry find_string_entry(unsigned int id);

} // namespace zor_text
