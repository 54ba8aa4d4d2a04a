// The private heap as its hosts use it.
#include "zorutils/zorsys/heap.h"

#include <gtest/gtest.h>

#include <stdint.h>
#include <string.h>
#include <thread>
#include <vector>

namespace {

constexpr size_t mebibyte = 1024 * 1024;
constexpr size_t granularity = 4 * mebibyte;

// What is in use, but for the marks at the ends of its spaces, which count too: how many spaces
// there are is the allocator's affair.
void expect_in_use(size_t bytes)
{
    constexpr size_t marks = 1024;
    EXPECT_LE(dlmallinfo().uordblks, bytes + marks);
    EXPECT_GE(dlmallinfo().uordblks + marks, bytes);
}

// The heap is the process's: a test looks at what changes.
size_t from_system()
{
    const dlheap::mallinfo info = dlmallinfo();
    return info.arena + info.hblkhd;
}

TEST(DlHeap, GivesBlocksThatAreApart)
{
    std::vector<unsigned char*> blocks;
    for (size_t size = 1; size < 5000; size += 7) {
        auto* block = static_cast<unsigned char*>(dlmalloc(size));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % (2 * sizeof(void*)), 0u);
        memset(block, static_cast<int>(blocks.size() & 0xFF), size);
        blocks.push_back(block);
    }
    for (size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(blocks[i][0], i & 0xFF);
        EXPECT_EQ(blocks[i][7 * i], i & 0xFF) << "the last byte";
        dlfree(blocks[i]);
    }
}

TEST(DlHeap, ClearsWhatDlcallocGives)
{
    auto* dirty = static_cast<unsigned char*>(dlmalloc(1000));
    memset(dirty, 0xFF, 1000);
    dlfree(dirty);
    auto* block = static_cast<unsigned char*>(dlcalloc(100, 10));
    ASSERT_NE(block, nullptr);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(block[i], 0);
    dlfree(block);
}

TEST(DlHeap, KeepsTheContentsThroughDlrealloc)
{
    auto* block = static_cast<char*>(dlrealloc(nullptr, 10));
    ASSERT_NE(block, nullptr);
    strcpy(block, "contents");
    block = static_cast<char*>(dlrealloc(block, 3 * mebibyte));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "contents");
    block = static_cast<char*>(dlrealloc(block, 9));
    EXPECT_STREQ(block, "contents");
    dlfree(block);
}

TEST(DlHeap, TakesNull)
{
    dlfree(nullptr);
}

TEST(DlHeap, GivesNullForASizeBeyondTheAddressSpace)
{
    const volatile size_t all = SIZE_MAX;
    EXPECT_EQ(dlmalloc(all), nullptr);
    EXPECT_EQ(dlmalloc(all - 100), nullptr);
    EXPECT_EQ(dlmalloc(all / 2), nullptr);
    EXPECT_EQ(dlcalloc(all / 2, 3), nullptr) << "the product doesn't fit";
    void* block = dlmalloc(10);
    EXPECT_EQ(dlrealloc(block, all), nullptr);
    dlfree(block);
}

TEST(DlHeap, CountsWhatIsInUse)
{
    void* first = dlmalloc(1000);
    const dlheap::mallinfo before = dlmallinfo();
    void* block = dlmalloc(100000);
    const dlheap::mallinfo with = dlmallinfo();
    EXPECT_GE(with.uordblks, before.uordblks + 100000);
    EXPECT_LE(with.uordblks, before.uordblks + 100100);
    dlfree(block);
    EXPECT_EQ(dlmallinfo().uordblks, before.uordblks);
    dlfree(first);
    const dlheap::mallinfo info = dlmallinfo();
    EXPECT_EQ(info.smblks, 0u);
    EXPECT_EQ(info.hblks, 0u);
    EXPECT_EQ(info.fsmblks, 0u);
    EXPECT_GE(info.usmblks, from_system());
}

TEST(DlHeap, GrowsByFourMebibytes)
{
    void* block = dlmalloc(1);
    EXPECT_GT(from_system(), 0u);
    EXPECT_EQ(from_system() % granularity, 0u);
    const size_t before = from_system();
    void* great = dlmalloc(5 * mebibyte);
    EXPECT_EQ(from_system() % granularity, 0u);
    EXPECT_GE(from_system() + granularity, before + 5 * mebibyte);
    dlfree(great);
    dlfree(block);
}

TEST(DlHeap, ServesGreatRequestsFromTheSpace)
{
    void* small = dlmalloc(1);
    const size_t mappings = dlmallinfo().hblkhd;
    std::vector<void*> blocks;
    for (const size_t size : {mebibyte, 3 * mebibyte, 8 * mebibyte, 16 * mebibyte, 32 * mebibyte,
                              64 * mebibyte, 100 * mebibyte}) {
        const size_t in_use = dlmallinfo().uordblks;
        blocks.push_back(dlmalloc(size));
        ASSERT_NE(blocks.back(), nullptr);
        // The end marks of a space that does not adjoin the last are counted here, a few bytes
        // each; a mapping of its own would be counted whole.
        EXPECT_LT(dlmallinfo().hblkhd, mappings + size / 2) << size;
        EXPECT_GE(dlmallinfo().uordblks, in_use + size);
    }
    for (void* block : blocks)
        dlfree(block);
    dlfree(small);
}

// When the allocator gives a space back to the system is its own affair; it must not grow by what
// was released.
TEST(DlHeap, ReleasedSpacesAreUsedAgain)
{
    void* kept = dlmalloc(1); // before the first block the figures are of no space at all
    const size_t in_use = dlmallinfo().uordblks;
    size_t most_of_first = 0;
    for (int round = 0; round < 10; ++round) {
        std::vector<void*> blocks;
        for (size_t size = 1; size <= 64 * mebibyte; size *= 2)
            blocks.push_back(dlmalloc(size));
        for (void* block : blocks) {
            ASSERT_NE(block, nullptr);
            dlfree(block);
        }
        expect_in_use(in_use);
        if (round == 0)
            most_of_first = dlmallinfo().usmblks;
    }
    EXPECT_LE(dlmallinfo().usmblks, 2 * most_of_first) << "ten rounds take no ten times as much";
    dlfree(kept);
}

TEST(DlHeap, IsSharedByThreads)
{
    const auto work = [] {
        std::vector<unsigned char*> blocks;
        for (unsigned int i = 0; i < 2000; ++i) {
            auto* block = static_cast<unsigned char*>(dlmalloc(1 + i % 300));
            block[0] = static_cast<unsigned char>(i);
            blocks.push_back(block);
            if (i % 3 == 0) {
                dlfree(blocks.front());
                blocks.erase(blocks.begin());
            }
        }
        for (unsigned char* block : blocks)
            dlfree(block);
    };
    const size_t before = dlmallinfo().uordblks;
    std::thread first(work);
    std::thread second(work);
    work();
    first.join();
    second.join();
    expect_in_use(before);
}

} // namespace
