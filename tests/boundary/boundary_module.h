// tests/boundary/boundary_module.h: a second shared library that takes and gives strings, as a
// module of an application does.
#pragma once

#include "zorutils/zortext/zor_string.h"

#if defined(BOUNDARY_BUILDING)
#define BOUNDARY_API ZOR_EXPORT
#else
#define BOUNDARY_API ZOR_IMPORT
#endif

namespace boundary {

template <class T>
using S = zor_text::CZorStringT<T>;

// By value: taken, changed and given back.
BOUNDARY_API S<WCHAR> append_by_value(S<WCHAR> text, WCHAR c);
BOUNDARY_API S<char> append_by_value(S<char> text, char c);

// By reference: changed in place.
BOUNDARY_API void double_in_place(S<WCHAR>& text);
BOUNDARY_API void double_in_place(S<char>& text);

// Kept as a copy by the module and given back as a shared one.
BOUNDARY_API void keep(const S<WCHAR>& text);
BOUNDARY_API S<WCHAR> kept();
BOUNDARY_API void forget();

// Locks and unlocks the caller's string, and frees it.
BOUNDARY_API WCHAR* lock(S<WCHAR>& text);
BOUNDARY_API void unlock(S<WCHAR>& text);
BOUNDARY_API void release(S<WCHAR>& text);

// A string object made on the heap by the module; the caller destroys it in place.
BOUNDARY_API S<WCHAR>* construct_at(void* memory, const WCHAR* text);

// The nil block as the module sees it, and whether it takes the string for nil.
BOUNDARY_API const void* nil_address();
BOUNDARY_API bool is_nil(const S<WCHAR>& text);

// Throws a library exception through the boundary: std::bad_alloc of a bad message format.
BOUNDARY_API void throw_bad_allocation();

} // namespace boundary
