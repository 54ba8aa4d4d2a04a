// zorutils/platform/posix/waitable.h: what WaitForSingleObject waits for.
#pragma once

#include "zorutils/platform/posix/handle_table.h"

namespace zor::platform {

class Waitable : public HandleObject
{
public:
    // False with errno.
    virtual bool wait() = 0;
};

} // namespace zor::platform
