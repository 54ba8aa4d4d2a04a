// zorutils/platform/posix/files.h: files: CreateFileW and its kin.
#pragma once

#include "zorutils/platform/win_types.h"
