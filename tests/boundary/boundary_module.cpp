#include "tests/boundary/boundary_module.h"

#include <new>

namespace boundary {

namespace {

// Never destroyed at exit: forget() empties it.
S<WCHAR>& kept_text()
{
    static S<WCHAR> text;
    return text;
}

} // namespace

S<WCHAR> append_by_value(S<WCHAR> text, WCHAR c)
{
    text += c;
    return text;
}

S<char> append_by_value(S<char> text, char c)
{
    text += c;
    return text;
}

void double_in_place(S<WCHAR>& text)
{
    text += text;
}

void double_in_place(S<char>& text)
{
    text += text;
}

void keep(const S<WCHAR>& text)
{
    kept_text() = text;
}

S<WCHAR> kept()
{
    return kept_text();
}

void forget()
{
    kept_text().Empty();
}

WCHAR* lock(S<WCHAR>& text)
{
    return text.LockBuffer();
}

void unlock(S<WCHAR>& text)
{
    text.UnlockBuffer();
}

void release(S<WCHAR>& text)
{
    text.Empty();
}

S<WCHAR>* construct_at(void* memory, const WCHAR* text)
{
    return new (memory) S<WCHAR>(text);
}

const void* nil_address()
{
    return zor_string_internal_data::g_afxNilStr;
}

bool is_nil(const S<WCHAR>& text)
{
    return text.c_str() == static_cast<const void*>(zor_string_internal_data::g_afxNilStr);
}

void throw_bad_allocation()
{
    S<WCHAR>().FormatMessageW(ZOR_W("%1!"), 1);
}

} // namespace boundary
