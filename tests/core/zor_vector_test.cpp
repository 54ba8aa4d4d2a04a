// The vector and the array of the exported signatures.
#include "zorutils/core/zor_vector.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/core/counted_item.h"

#include "zorutils/core/zor_array.h"

using zor_templ::CZorArray;
typedef std::string Item;

namespace {

zor_vector<CountedItem> numbered(int count)
{
    zor_vector<CountedItem> v;
    for (int i = 0; i < count; ++i)
        v.push_back(CountedItem(i));
    return v;
}

void expect_numbered(const zor_vector<CountedItem>& v, int count)
{
    ASSERT_EQ(v.size(), static_cast<size_t>(count));
    int expected = 0;
    for (const CountedItem& item : v)
        EXPECT_EQ(item.value, expected++);
}

} // namespace

TEST(ZorVector, PopsItsLastItem)
{
    zor_vector<Item> items = {"one", "two"};
    items.pop_back();
    EXPECT_EQ(items.size(), 1u);
    EXPECT_EQ(items.back(), "one");
    items.push_back("three");
    EXPECT_EQ(items.back(), "three");
    items.pop_back();
    items.pop_back();
    EXPECT_TRUE(items.empty());
}

TEST(ZorVector, LayoutIsPointerSizeCapacity)
{
    zor_vector<int> v;
    v.push_back(7);
    struct Plain
    {
        int* items;
        size_t size;
        size_t capacity;
    } plain;
    ASSERT_EQ(sizeof v, sizeof plain);
    memcpy(&plain, static_cast<void*>(&v), sizeof plain);
    EXPECT_EQ(plain.items, v.data());
    EXPECT_EQ(plain.size, 1u);
    EXPECT_EQ(plain.capacity, v.capacity());
    EXPECT_EQ(sizeof(CZorArray<int, const int&>), sizeof plain);
}

TEST(ZorVector, GrowsAndKeepsItsItemsInOrder)
{
    for (int count : {0, 1, 8, 9, 12, 13, 1000})
        expect_numbered(numbered(count), count);
    EXPECT_EQ(CountedItem::alive, 0);
}

TEST(ZorVector, CopiesAreApartAndMovesLeaveNothingBehind)
{
    zor_vector<CountedItem> first = numbered(5);
    zor_vector<CountedItem> copy = first;
    copy[0].value = 99;
    EXPECT_EQ(first[0].value, 0);
    zor_vector<CountedItem> moved = std::move(first);
    expect_numbered(moved, 5);
    EXPECT_TRUE(first.empty());
    zor_vector<CountedItem>& self = moved;
    moved = self;
    expect_numbered(moved, 5);
    copy = moved;
    expect_numbered(copy, 5);
}

TEST(ZorVector, ItsOwnItemMayBeAddedWhileItGrows)
{
    zor_vector<Item> v;
    v.push_back("first");
    while (v.size() < v.capacity())
        v.push_back("x");
    v.push_back(v[0]);
    EXPECT_EQ(v.back(), "first");
}

TEST(ZorVector, ReserveNeverGivesRoomBackAndClearKeepsIt)
{
    zor_vector<CountedItem> v = numbered(3);
    v.reserve(100);
    EXPECT_EQ(v.capacity(), 100u);
    v.reserve(1);
    EXPECT_EQ(v.capacity(), 100u);
    expect_numbered(v, 3);
    v.clear();
    EXPECT_EQ(CountedItem::alive, 0);
    EXPECT_EQ(v.capacity(), 100u);
}

TEST(ZorVector, AFailedCopyLeavesItAsItWas)
{
    // A full vector of 8: growing takes nine copies, each of which may fail.
    for (int n = 0; n < 9; ++n) {
        zor_vector<CountedItem> v = numbered(8);
        ASSERT_EQ(v.capacity(), 8u);
        const CountedItem extra(8);
        CountedItem::copies_until_failure = n;
        EXPECT_THROW(v.push_back(extra), std::bad_alloc);
        CountedItem::copies_until_failure = -1;
        expect_numbered(v, 8);
        EXPECT_EQ(CountedItem::alive, 9);
        v.push_back(extra);
        expect_numbered(v, 9);
    }
    EXPECT_EQ(CountedItem::alive, 0);
}

TEST(ZorVector, ASizeBeyondMemoryIsBadAlloc)
{
    zor_vector<double> v{1.0};
    EXPECT_THROW(v.reserve(SIZE_MAX / 2), std::bad_alloc);
    EXPECT_EQ(v[0], 1.0);
}

TEST(ZorArray, AddYieldsTheIndexAndItemsCanBeReachedAndReplaced)
{
    CZorArray<Item, const Item&> a;
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(a.Add("one"), 0);
    EXPECT_EQ(a.Add("two"), 1);
    a.SetAt(0, "1");
    a[1] += "!";
    EXPECT_EQ(a.GetSize(), 2);
    EXPECT_EQ(a.GetAt(0), "1");
    EXPECT_EQ(a[1], "two!");
    std::vector<std::string> seen;
    for (const Item& item : a)
        seen.push_back(item);
    EXPECT_EQ(seen, (std::vector<std::string>{"1", "two!"}));
}

TEST(ZorArray, RemoveAllEmptiesAndListsInitialise)
{
    CZorArray<unsigned int, const unsigned int&> a{3u, 4u};
    CZorArray<unsigned int, const unsigned int&> copy = a;
    a.RemoveAll();
    EXPECT_EQ(a.GetSize(), 0);
    ASSERT_EQ(copy.GetSize(), 2);
    EXPECT_EQ(copy[1], 4u);
}
