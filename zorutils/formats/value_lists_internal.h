// zorutils/formats/value_lists_internal.h: what stands behind a date mask.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor_formats {

// Year-month-day: the month from 1 to 12, the day from 1 to 31, or to 29 in February. Neither the
// year nor the length of the other months is looked at, on purpose. False for fewer than three
// pieces.
bool IsDateText(const WCHAR* text);

// A date, a blank, and hours:minutes:seconds up to 24:59:59; the hour 24 is meant. Pieces that are
// no number count as 0.
bool IsDateTimeText(const WCHAR* text);

} // namespace zor_formats
