// common/thread_end.h: the end of a thread that startThread started; a source per system.
#pragma once

namespace host {

// Waits for it, closes its handle and gives its exit code.
int wait_for_thread(void* thread);

} // namespace host
