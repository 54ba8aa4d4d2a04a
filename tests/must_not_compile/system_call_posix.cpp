// Hosts see the plain types, and no call of the operating system.
#include "zorutils/zorutils.h"

#ifdef ZOR_CONTROL
HANDLE opened;
#else
HANDLE opened = CreateFileW(nullptr, 0, 0, nullptr, 0, 0, nullptr);
#endif
