// tests/faults/crash_faults.h: what crash_program needs of each target.
#pragma once

#include <functional>

#include "zorutils/zorutils.h"

namespace crash {

void rest(unsigned milliseconds);

// An access that the processor refuses since it is not aligned.
void read_misaligned();
// Reads through the end of a file's mapping; false where the target knows no such fault.
bool read_behind_file(const char* path);

// Raises a code as a fault, from here.
void raise_code(DWORD code);
// Calls `use` with the registers as they are here; what it returned.
unsigned with_registers(const std::function<unsigned(CONTEXT* registers)>& use);

// Faults on the thread that shows a text on the debugger stream, once it has this in it.
void fault_when_told(const char* text);
// From now on the stream goes to the error stream; nothing on Windows, where no test asks for it.
void show_debugger_stream();
// A handler of the host's own, which prints that it is one and ends the program with 33; nothing on
// Windows, which has none of signals.
void handle_faults_as_host();

// Take the lock on this thread, and never give it back.
void hold_heap_lock();
void hold_loader_lock();
// Damages the heap so that the next request fails inside it; false where that is not known.
bool break_heap();

} // namespace crash
