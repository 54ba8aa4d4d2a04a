// zorutils/formats/value_lists.h: delimited values, arrays of them, and masks.
//
//     StringArray values;
//     zor_formats::ParseDelimitersValues(ZOR_W("P1; 12.5 ;ok"), values, ZOR_W(";,")); // 3 items
//     zor_formats::StringArrayToString(values, '|');                                  //
//     "P1|12.5|ok" zor_formats::CheckFormat(ZOR_W("2013-10-01"), ZOR_W("9999-99-99")); // true
//
// Nothing here throws but for std::bad_alloc, and no message is issued. All functions may be called
// from any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_array.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_templ::CZorArray;
using zor_text::CZorStringT;

typedef CZorArray<CZorStringT<WCHAR>, const CZorStringT<WCHAR>&> StringArray;
typedef CZorArray<unsigned int, const unsigned int&> UIntArray;

// True if the text has the mask's length and matches it character by character: "9" stands for any
// digit or letter, all else for itself. Null counts as the empty text, which matches the empty
// mask.
ZOR_API bool CheckFormat(const WCHAR* text, const WCHAR* mask);

// Splits at each character of `delimiters` and appends the items to `values`, which is not cleared.
// Items are trimmed and lose their carriage returns and line feeds.
//
// A delimiter at the front of what is left is no split, on purpose: "-1-2" at "-" is one item, and
// "a,,b" at "," is "a" and ",b". The empty text is one empty item; there is no empty item behind a
// delimiter at the end. Always true.
ZOR_API bool ParseDelimitersValues(const CZorStringT<WCHAR>& text, StringArray& values,
                                   const CZorStringT<WCHAR>& delimiters);

// As ParseDelimitersValues with one delimiter, but only one at the front of the whole text is no
// split: "a,,b" is "a", "" and "b". False, with the items before it appended, at the first item
// that holds a character of `forbidden`.
ZOR_API bool ParseValues(const CZorStringT<WCHAR>& text, StringArray& values, char delimiter,
                         const CZorStringT<WCHAR>& forbidden);

// The items with `delimiter` between them.
ZOR_API const CZorStringT<WCHAR> StringArrayToString(const StringArray& values, WCHAR delimiter);

ZOR_API bool IsStringInStringArray(const StringArray& values, const CZorStringT<WCHAR>& text);

// Compares the 32 bits: -1 is found as 4294967295.
ZOR_API bool IsUIntInUIntArray(const UIntArray& values, int value);

} // namespace zor_formats
