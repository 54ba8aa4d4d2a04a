// What cannot be had from outside: no memory for a loader.
#include "zorutils/zorsys/dll_loader.h"

#include <gtest/gtest.h>

#include "tests/support/failing_allocation.h"
#include "tests/support/text.h"

using namespace zor_test;

TEST(DllLoaderMemory, NoMemoryIsANullLoader)
{
    const Wide name("no such library");
    TDLLFuncLoader::ReleaseDLL(TDLLFuncLoader::LoadDLL(Wide("make the registry")));
    int failures = 0;
    for (int n = 1;; ++n) {
        TDLLFuncLoader* loader = nullptr;
        bool failed = false;
        {
            FailingAllocation allocation(n);
            loader = TDLLFuncLoader::LoadDLL(name);
            failed = allocation.happened();
        }
        if (!failed) {
            ASSERT_NE(loader, nullptr);
            EXPECT_EQ(loader->GetResult(), 0);
            TDLLFuncLoader::ReleaseDLL(loader);
            break;
        }
        EXPECT_EQ(loader, nullptr) << n;
        ++failures;
        // The name is free again for one who has memory.
        TDLLFuncLoader* const later = TDLLFuncLoader::LoadDLL(name);
        ASSERT_NE(later, nullptr) << n;
        TDLLFuncLoader::ReleaseDLL(later);
    }
    EXPECT_GT(failures, 1);
}
