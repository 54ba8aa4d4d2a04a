// The property that POSIX alone has.
#include "fuzz/posix/registry.h"
#include "tests/fuzz/replay.h"

TEST(FuzzCorpus, KeepsThePropertyOfRegistryFiles)
{
    zor_fuzz::replay({"registry", zor_fuzz::registry});
}
