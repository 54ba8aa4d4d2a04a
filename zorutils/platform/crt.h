// zorutils/platform/crt.h: the C runtime's non-standard calls, and its 16-bit text calls.
//
// On Windows they are the runtime's own. On POSIX they have the same names, results and limits, and
// the wide ones work on 16-bit units; each topic has its header and source in platform/posix/.
#pragma once

#include "zorutils/platform/win_types.h"

#ifdef _WIN32

#include <ctype.h>
#include <fcntl.h>
#include <float.h>
#include <io.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

#else

#include "zorutils/platform/posix/crt_ctype.h"
#include "zorutils/platform/posix/crt_file.h"
#include "zorutils/platform/posix/crt_format.h"
#include "zorutils/platform/posix/crt_number.h"
#include "zorutils/platform/posix/crt_scan.h"
#include "zorutils/platform/posix/crt_text.h"
#include "zorutils/platform/posix/crt_time.h"

#endif
