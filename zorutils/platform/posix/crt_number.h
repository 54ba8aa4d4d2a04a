// zorutils/platform/posix/crt_number.h: numbers and text: _fcvt, _nextafter, _itow, _wtoi, wcstod.
#pragma once

#include "zorutils/platform/win_types.h"
