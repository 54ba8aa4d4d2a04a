// tests/support/low_memory.h: memory at the lowest addresses that a process can have.
#pragma once

// A page of zeroes at address 65536, the same on every call, or null where the system has none to
// give.
void* page_at_65536();
