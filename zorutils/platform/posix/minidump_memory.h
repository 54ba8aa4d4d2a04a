// zorutils/platform/posix/minidump_memory.h: what writing a minidump needs, made before.
#pragma once

namespace zor::platform {

// Nothing if it is there. False if the system has no memory. Any thread.
bool set_dump_memory_aside();

} // namespace zor::platform
