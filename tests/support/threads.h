// tests/support/threads.h: what hosts do with a thread's handle, and what a debugger sees of it.
#pragma once

#include <string>

#include "zorutils/platform/win_types.h"

namespace zor_test {

// Waits for a thread that startThread started, and closes its handle; its exit code.
DWORD wait_for(void* thread);
// How often it was suspended.
DWORD resume(void* thread);
DWORD current_thread();

// The name that debuggers have for the calling thread; watching must have begun before it got it.
void watch_names();
std::string name_of_this_thread();
// What a target keeps of a name.
std::string kept_of(const std::string& name);

} // namespace zor_test
