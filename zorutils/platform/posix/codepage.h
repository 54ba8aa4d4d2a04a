// zorutils/platform/posix/codepage.h: code pages: MultiByteToWideChar and its twin, the active code page.
#pragma once

#include "zorutils/platform/win_types.h"
