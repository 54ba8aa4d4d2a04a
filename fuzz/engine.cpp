// One property under the fuzzing engine; ZOR_FUZZ_PROPERTY names it.
#include "fuzz/posix/registry.h"
#include "fuzz/properties.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    zor_fuzz::ZOR_FUZZ_PROPERTY(data, size);
    return 0;
}
