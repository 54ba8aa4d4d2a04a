// tests/faults/heap_lock_posix.h: the program's heap behind a lock that can be held.
#pragma once

// Takes the heap's lock, for good: whoever asks for memory or gives some back from now on waits.
void lock_heap();
