#include "zorutils/core/bad_allocation.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/heap.h"
#include "zorutils/zorsys/heap_settings_internal.h"
#include "zorutils/zorsys/library_allocation.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdio.h>
#include <stdlib.h>
#include <string>

namespace heap_itest {

class Counted
{
public:
    ZOR_LIBRARY_ALLOCATION

    virtual ~Counted() { ++destroyed; }

    static int destroyed;
    int value = 7;
};

int Counted::destroyed = 0;
ZOR_DEFINE_LIBRARY_ALLOCATION(Counted)

} // namespace heap_itest

namespace {

using heap_itest::Counted;

TEST(LibraryAllocation, MakesAndReleasesObjectsAndArrays)
{
    Counted::destroyed = 0;
    delete new Counted;
    delete[] new Counted[3];
    EXPECT_EQ(Counted::destroyed, 4);
}

// The blocks are the runtime's own, so that free takes them.
TEST(LibraryAllocation, GivesBlocksOfTheRuntime)
{
    auto* object = new Counted;
    object->~Counted();
    free(static_cast<void*>(object));
}

TEST(LibraryAllocation, PlacesAtTheAddressGiven)
{
    alignas(Counted) unsigned char place[sizeof(Counted)];
    auto* object = new (place) Counted;
    EXPECT_EQ(static_cast<void*>(object), static_cast<void*>(place));
    Counted::operator delete(object, static_cast<void*>(place));
    EXPECT_EQ(object->value, 7) << "deleting at a place does nothing";
    object->~Counted();
    EXPECT_EQ(Counted::operator new[](sizeof(place), place), static_cast<void*>(place));
    Counted::operator delete[](place, static_cast<void*>(place));
}

TEST(LibraryAllocation, RefusesASizeBeyond32Bits)
{
    EXPECT_THROW(zor_library_allocate(size_t(1) << 32), std::bad_alloc);
}

// --- The private heap's settings.

TEST(HeapSettings, AreTheOnesThatHostsRelyOn)
{
    const zor_heap_settings settings = zor_heap_settings_in_use();
    EXPECT_EQ(settings.granularity, 0x400000u);
    EXPECT_EQ(settings.trim_threshold, 0x200000u);
    EXPECT_EQ(settings.flags, 7u) << "mapping, locks and non-contiguous growth";
    EXPECT_EQ(settings.page_size, 4096u);
    // 0xFFFFFFFF in 32 bits: above every request.
    EXPECT_EQ(settings.mmap_threshold, static_cast<size_t>(-1));
}

TEST(HeapSettings, HaveAMagicNumberOfTheTickCount)
{
    const zor_heap_settings settings = zor_heap_settings_in_use();
    EXPECT_EQ(settings.magic & 15, 8u) << "never 0";
    // The three lowest bits are gone, so the tick count is known to 16 milliseconds.
    const DWORD made_at = static_cast<DWORD>(settings.magic) ^ 0x55555550;
    EXPECT_LT(GetTickCount() - made_at + 16, DWORD(3600 * 1000));
    EXPECT_EQ(zor_heap_settings_in_use().magic, settings.magic) << "set once";
}

TEST(HeapSettings, PrintFiguresToTheErrorStream)
{
    void* block = dlmalloc(10);
    testing::internal::CaptureStderr();
    dlmalloc_stats();
    fflush(stderr);
    std::string text = testing::internal::GetCapturedStderr();
    dlfree(block);
    unsigned long most = 0;
    unsigned long now = 0;
    unsigned long used = 0;
    const char* const format =
        "max system bytes = %10lu system bytes     = %10lu in use bytes     = %10lu";
    ASSERT_EQ(sscanf(text.c_str(), format, &most, &now, &used), 3) << text;
    EXPECT_GE(most, now);
    EXPECT_GT(now, used);
    EXPECT_EQ(text.find("max system bytes = "), 0u);
    EXPECT_EQ(text.substr(0, 30).find('\n'), text.find_first_not_of(" 0123456789", 19));
}

} // namespace
