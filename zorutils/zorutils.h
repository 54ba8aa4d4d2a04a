// zorutils/zorutils.h: the umbrella header.
#pragma once

#define ZORUTILS_VERSION "1.0.0"

#include "zorutils/core/zor_api.h"
