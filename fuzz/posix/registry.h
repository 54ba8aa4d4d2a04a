// fuzz/posix/registry.h: the property of registry files, which POSIX alone has.
#pragma once

#include <stddef.h>

namespace zor_fuzz {

void registry(const unsigned char* data, size_t size);

} // namespace zor_fuzz
