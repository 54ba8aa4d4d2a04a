// zorutils/platform/posix/elf_identity.h: what a loaded program or library says that it is.
//
// It is read from memory by way of `memory`, the descriptor of /proc/self/mem, so that nothing that
// is broken there faults.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace zor::platform {

constexpr size_t most_build_id_bytes = 64;

// Whether a program or library begins at an address.
bool begins_elf(int memory, uint64_t base);

// The build id of the one that begins there; its length, 0 if it has none.
size_t read_build_id(int memory, uint64_t base, char* to);

} // namespace zor::platform
