// The list whose add yields a position object.
#include "zorutils/core/zor_list.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/core/counted_item.h"

using namespace zor_templ;

typedef std::string Item;

namespace {

typedef std::unique_ptr<ZorTemplPositionImplBase> OwnedPosition;

} // namespace

TEST(ZorList, ItemsLeaveInTheOrderTheyCame)
{
    CZorList<Item> list;
    for (const char* text : {"a", "b", "c"})
        delete list.AddTail(text);
    EXPECT_EQ(list.GetSize(), 3);
    EXPECT_EQ(list.GetHead(), "a");
    EXPECT_EQ(list.RemoveHead(), "a");
    EXPECT_EQ(list.RemoveHead(), "b");
    EXPECT_EQ(list.RemoveHead(), "c");
    EXPECT_TRUE(list.IsEmpty());
}

TEST(ZorList, APositionReachesItsElementAfterOthersHaveGone)
{
    CZorList<Item> list;
    delete list.AddTail("a");
    const OwnedPosition b(list.AddTail("b"));
    list.RemoveHead();
    delete list.AddTail("c");
    EXPECT_EQ(list.GetAt(*b), "b");
}

TEST(ZorList, CloneIsAPositionOfItsOwnAndAssignTakesTheOthersPlace)
{
    CZorList<Item> list;
    const OwnedPosition a(list.AddTail("a"));
    const OwnedPosition b(list.AddTail("b"));
    const OwnedPosition clone(a->Clone());
    a->Assign(*b);
    EXPECT_EQ(list.GetAt(*a), "b");
    EXPECT_EQ(list.GetAt(*clone), "a");
}

TEST(ZorList, AFailedAddLeavesItAsItWas)
{
    CZorList<CountedItem> list;
    delete list.AddTail(CountedItem(1));
    const CountedItem item(2);
    CountedItem::copies_until_failure = 0;
    EXPECT_THROW(delete list.AddTail(item), std::bad_alloc);
    CountedItem::copies_until_failure = -1;
    ASSERT_EQ(list.GetSize(), 1);
    EXPECT_EQ(list.GetHead().value, 1);
    list.RemoveAll();
    EXPECT_EQ(CountedItem::alive, 1);
}

TEST(ZorList, CopiesAreApart)
{
    CZorList<Item> list;
    delete list.AddTail("a");
    CZorList<Item> copy = list;
    copy.RemoveHead();
    EXPECT_EQ(list.GetSize(), 1);
}
