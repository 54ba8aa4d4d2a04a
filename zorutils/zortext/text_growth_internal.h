// zorutils/zortext/text_growth_internal.h: texts put together from many pieces.
#pragma once

#include <algorithm>
#include <limits>

#include "zorutils/zortext/zor_string.h"

// Room for `count` more characters. A string grows to exactly what is asked for, so a text of many
// pieces would be copied once per piece; here its block at least doubles.
template <class T>
void make_room(zor_text::CZorStringT<T>& text, int count)
{
    const int length = text.GetLength();
    if (length == 0 || count <= text.GetAllocLength() - length ||
        length > std::numeric_limits<int>::max() / 4)
        return;
    text.GetBuffer(length + std::max(length, count));
}
