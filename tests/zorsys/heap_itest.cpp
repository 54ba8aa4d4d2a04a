#include "zorutils/zorsys/heap.h"
#include "zorutils/zorsys/library_allocation.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdlib.h>

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

} // namespace
