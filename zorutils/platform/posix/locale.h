// zorutils/platform/posix/locale.h: the user's locale: GetLocaleInfoW.
#pragma once

#include "zorutils/platform/win_types.h"
