// A returned truth value that nobody looks at.
#include "zorutils/core/zor_error_code.h"

mandatory_error::ZorErrorCode<bool> save();

void run()
{
#ifdef ZOR_CONTROL
    static_cast<void>(save());
#else
    save();
#endif
}
