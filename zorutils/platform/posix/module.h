// zorutils/platform/posix/module.h: modules: GetModuleFileNameW.
#pragma once

#include "zorutils/platform/win_types.h"
