// zorutils/core/zor_api.h: the export macro and the wide text literal.
//
// ZOR_API marks every class and function of the interface; all else is hidden. The library's own
// sources are compiled with ZOR_BUILDING; programs that link the objects statically (the tests of
// internals) define ZOR_STATIC.
#pragma once

#include "zorutils/platform/target.h"

#if defined(ZOR_STATIC)
#define ZOR_API
#elif defined(ZOR_BUILDING)
#define ZOR_API ZOR_EXPORT
#else
#define ZOR_API ZOR_IMPORT
#endif
