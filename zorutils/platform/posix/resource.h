// zorutils/platform/posix/resource.h: string resources from compiled .res files and PE modules.
#pragma once

#include "zorutils/platform/win_types.h"
