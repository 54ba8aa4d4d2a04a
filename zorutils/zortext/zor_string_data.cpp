#include "zorutils/zortext/zor_string_data.h"

namespace zor_string_internal_data {

// Writable on purpose: assigning empty text to an empty string stores the zeroes that are there.
LONG g_afxInitData[4] = {-1, 0, 0, 0};
void* g_afxNilStr = &g_afxInitData[3];
char afxChNil = 0;
WCHAR afxChNilW = 0;

LONG* get_afxInitData()
{
    return g_afxInitData;
}

void** get_afxNilStr()
{
    return &g_afxNilStr;
}

} // namespace zor_string_internal_data
