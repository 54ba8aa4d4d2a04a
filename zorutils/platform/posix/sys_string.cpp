#include "zorutils/platform/posix/sys_string.h"

#include <limits>
#include <stdlib.h>
#include <string.h>
#include <string>

namespace {

// The count stands directly in front of the units; the block begins earlier to keep them aligned.
constexpr size_t header_bytes = 16;

// The system refuses these lengths before it asks for memory.
constexpr UINT first_length_refused =
    (std::numeric_limits<UINT>::max() - sizeof(WCHAR) - sizeof(void*)) / sizeof(WCHAR);

unsigned char* block_of(BSTR string)
{
    return reinterpret_cast<unsigned char*>(string) - header_bytes;
}

} // namespace

BSTR SysAllocString(LPCWSTR text)
{
    if (!text)
        return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(std::char_traits<WCHAR>::length(text)));
}

BSTR SysAllocStringLen(LPCWSTR text, UINT length)
{
    if (length >= first_length_refused)
        return nullptr;
    const UINT bytes = length * static_cast<UINT>(sizeof(WCHAR));
    auto* block = static_cast<unsigned char*>(malloc(header_bytes + bytes + sizeof(WCHAR)));
    if (!block)
        return nullptr;
    memcpy(block + header_bytes - sizeof(bytes), &bytes, sizeof(bytes));
    BSTR string = reinterpret_cast<BSTR>(block + header_bytes);
    if (text)
        memcpy(string, text, bytes);
    string[length] = 0;
    return string;
}

BOOL SysReAllocStringLen(BSTR* string, LPCWSTR text, UINT length)
{
    BSTR made = SysAllocStringLen(text, length);
    if (!made)
        return FALSE;
    if (!text) {
        const UINT old_length = SysStringLen(*string);
        const UINT kept = old_length < length ? old_length : length;
        if (kept)
            memcpy(made, *string, kept * sizeof(WCHAR));
    }
    SysFreeString(*string);
    *string = made;
    return TRUE;
}

void SysFreeString(BSTR string)
{
    if (string)
        free(block_of(string));
}

UINT SysStringLen(BSTR string)
{
    return SysStringByteLen(string) / static_cast<UINT>(sizeof(WCHAR));
}

UINT SysStringByteLen(BSTR string)
{
    if (!string)
        return 0;
    UINT bytes = 0;
    memcpy(&bytes, block_of(string) + header_bytes - sizeof(bytes), sizeof(bytes));
    return bytes;
}
