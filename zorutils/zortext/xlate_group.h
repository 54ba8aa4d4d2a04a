// zorutils/zortext/xlate_group.h: the grammar of translation files.
//
//     const WCHAR* at = begin;
//     CXlateGroup key;
//     while (FindXlateGroup(at, end, key) == XLATE_GROUP_FOUND)
//         at = key.next;
//
// A translation file is UTF-16 little-endian. A group is a text in brackets; what stands between
// groups has no meaning. Brackets inside a group nest and belong to its text, and nothing escapes
// one. Pure functions, for the table and for the tools of translators.
#pragma once

#include <stddef.h>

#include "zorutils/platform/win_types.h"

enum EXlateGroup
{
    XLATE_GROUP_FOUND = 0,
    XLATE_GROUP_NONE = 1,      // no "[", or one with nothing at all behind it
    XLATE_GROUP_UNMATCHED = 2, // the text ends inside the group that begins at `text`
};

struct CXlateGroup
{
    const WCHAR* text = nullptr; // behind the "[", not terminated
    size_t length = 0;           // 16-bit units; 0 when unmatched
    const WCHAR* next = nullptr; // behind the "]"
};

// The first group that begins at `position` or behind it. `group` is written when one begins.
inline EXlateGroup FindXlateGroup(const WCHAR* position, const WCHAR* end, CXlateGroup& group)
{
    while (position != end && *position != '[')
        ++position;
    if (position == end || position + 1 == end)
        return XLATE_GROUP_NONE;
    group.text = ++position;
    group.length = 0;
    group.next = end;
    for (size_t depth = 0; position != end; ++position) {
        if (*position == '[') {
            ++depth;
        } else if (*position == ']' && depth-- == 0) {
            group.length = static_cast<size_t>(position - group.text);
            group.next = position + 1;
            return XLATE_GROUP_FOUND;
        }
    }
    return XLATE_GROUP_UNMATCHED;
}
