#include "zorutils/platform/posix/fault_memory.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <thread>
#include <vector>

#include "zorutils/platform/fault_state.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor::platform;

namespace {

// Called so that the compiler does not know what becomes of a block.
void (*volatile release)(void*) = free;
void* (*volatile enlarge)(void*, size_t) = realloc;

class FaultMemory : public testing::Test
{
protected:
    FaultMemory() { EXPECT_TRUE(set_fault_memory_aside()); }
};

} // namespace

TEST_F(FaultMemory, ServesOnlyAThreadThatHandlesAFault)
{
    void* volatile common = malloc(100);
    EXPECT_FALSE(is_fault_memory(common));
    void* volatile aside = nullptr;
    {
        const FaultScope scope;
        aside = malloc(100);
        std::thread([] {
            void* volatile block = malloc(100);
            EXPECT_FALSE(is_fault_memory(block)) << "another thread";
            free(block);
        }).join();
    }
    EXPECT_TRUE(is_fault_memory(aside));
    free(aside); // knows its way back
    free(common);
}

TEST_F(FaultMemory, LeavesBlocksOfTheCommonHeapAlone)
{
    auto* const common = static_cast<char*>(malloc(100));
    strcpy(common, "still there");
    void* const kept = common;
    {
        const FaultScope scope;
        release(common);
    }
    EXPECT_STREQ(static_cast<char*>(kept), "still there");
    free(kept);
}

TEST_F(FaultMemory, MovesABlockThatGrows)
{
    auto* const common = static_cast<char*>(malloc(100));
    strcpy(common, "moved");
    char* moved = nullptr;
    {
        const FaultScope scope;
        moved = static_cast<char*>(enlarge(common, 10000));
        EXPECT_TRUE(is_fault_memory(moved));
        EXPECT_STREQ(moved, "moved");
    }
    // Back to the common heap, once the fault is over.
    moved = static_cast<char*>(enlarge(moved, 20000));
    EXPECT_FALSE(is_fault_memory(moved));
    EXPECT_STREQ(moved, "moved");
    release(moved);
    release(common);
}

TEST_F(FaultMemory, IsClearedWhereThatIsAskedFor)
{
    const FaultScope scope;
    for (int i = 0; i < 3; ++i) {
        auto* const block = static_cast<unsigned char*>(calloc(100, 10));
        EXPECT_TRUE(is_fault_memory(block));
        for (int k = 0; k < 1000; ++k)
            ASSERT_EQ(block[k], 0);
        memset(block, 0xFF, 1000);
        free(block);
    }
    const volatile size_t half = SIZE_MAX / 2;
    EXPECT_EQ(calloc(half, 3), nullptr);
}

TEST_F(FaultMemory, ServesTheOperatorsAndStrings)
{
    zor_text::CZorStringT<WCHAR> text(ZOR_W("before"));
    std::string bytes = "before";
    std::vector<int> numbers(10);
    {
        const FaultScope scope;
        for (int i = 0; i < 1000; ++i) {
            text += ZOR_W(" and behind");
            bytes += " and behind, in the C++ library's own functions";
            numbers.push_back(i);
        }
        EXPECT_TRUE(is_fault_memory(bytes.data()));
        EXPECT_TRUE(is_fault_memory(numbers.data()));
        EXPECT_TRUE(is_fault_memory(text.c_str()));
    }
    text += ZOR_W(" it");
    bytes += " it";
    numbers.push_back(1);
    EXPECT_EQ(text.GetLength(), 6 + 1000 * 11 + 3);
    EXPECT_EQ(numbers.size(), 1011u);
}

TEST_F(FaultMemory, ComesToAnEnd)
{
    const FaultScope scope;
    EXPECT_EQ(malloc(size_t{65} << 20), nullptr);
    std::vector<void*> blocks;
    blocks.reserve(100);
    for (void* block = malloc(1 << 20); block != nullptr; block = malloc(1 << 20))
        blocks.push_back(block);
    EXPECT_GT(blocks.size(), 50u);
    for (void* const block : blocks)
        free(block);
    void* const again = malloc(1 << 20);
    EXPECT_NE(again, nullptr);
    free(again);
}
