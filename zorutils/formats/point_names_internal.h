// zorutils/formats/point_names_internal.h: the 64-bit way of counting a name up.
#pragma once

#include "zorutils/zortext/zor_string.h"

namespace zor_formats {

// As DoIncPtno, with machine integers and other limits: of the trailing digits at most the last 18
// take part, a leading zero among them keeps their width, and a name without digits gets the
// increment appended, its minus sign included. False for 0 and below zero.
bool IncPtnoInt64(zor_text::CZorStringT<WCHAR>& name, int increment);

} // namespace zor_formats
