// zorutils/platform/posix/stay_loaded.h: the library is not unloaded any more.
#pragma once

namespace zor::platform {

// From now on, for code of it that the system calls at any time: signal handlers, threads that
// nobody waits for. Any thread.
void stay_loaded();

} // namespace zor::platform
