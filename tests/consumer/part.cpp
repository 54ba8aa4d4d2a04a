#include <zorutils/zorutils.h>

// A module of the host: takes a string by reference and returns one by value.
zor_text::CZorStringT<WCHAR> next_name(const zor_text::CZorStringT<WCHAR>& name)
{
    zor_text::CZorStringT<WCHAR> next = name;
    zor_formats::DoIncPtno(next, 1);
    return next;
}
