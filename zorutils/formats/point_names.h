// zorutils/formats/point_names.h: names of survey points: the next one in a sequence, checks,
// repair.
//
//     CZorStringT<WCHAR> name = ZOR_W("STA0099");
//     zor_formats::DoIncPtno(name, 1);                            // "STA0100"
//     zor_formats::MakeNameCorrect(ZOR_W("Church (old)"), 40);    // "Church _old_"
//
// Nothing here throws but for std::bad_alloc, and no message is issued. All functions may be called
// from any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

using zor_text::CZorStringT;

// Makes `name` the one `increment` further on, or back. Only the digits at the very end count; a
// name without any gets the number appended. The width is kept by leading zeros, and only upward:
// "P09" gives "P10", "A99" gives "A100", but "A10" counted down gives "A9" and "A010" gives "A09".
// However many digits the number gains, one leading zero gives way: "007" and 993 give "01000".
//
// False, with the name as it was: for 0, below zero, and above 255 significant digits.
ZOR_API bool DoIncPtno(CZorStringT<WCHAR>& name, int increment);

// An ASCII letter, a digit or "_".
ZOR_API bool IsAdmisibleCharacter(WCHAR c);

// 1 to 40 admissible characters. The two behave the same; neither changes its argument.
ZOR_API bool IsValidName(const CZorStringT<WCHAR>& name);
ZOR_API bool IsValidFilename(CZorStringT<WCHAR>& name);

// The name cut to `maxLength` characters, with "_" for each character that would do harm in files
// and formulas. Milder than the check: blanks, ".", ":", "-" and letters of all scripts stay, so
// the result need not be a valid name.
ZOR_API const CZorStringT<WCHAR> MakeNameCorrect(const CZorStringT<WCHAR>& name, int maxLength);

// The text for a label in which "&" marks a mnemonic: each "&" that stands alone is doubled. Runs
// of two or more are left alone. From the second lone "&" on, the twin lands further left than the
// "&" itself, on purpose: "a&b&c" gives "a&&&b&c".
ZOR_API const CZorStringT<WCHAR> DoubleAmpersandForDisplay(const CZorStringT<WCHAR>& text);

} // namespace zor_formats
