// tests/core/counted_item.h: an item that knows how many of its kind are alive, and whose copy
// fails when it is told to.
#pragma once

#include <new>

struct CountedItem
{
    static int alive;
    static int copies_until_failure; // below 0: never

    explicit CountedItem(int n = 0) : value(n) { ++alive; }
    CountedItem(const CountedItem& source) : value(source.value)
    {
        if (copies_until_failure == 0)
            throw std::bad_alloc();
        if (copies_until_failure > 0)
            --copies_until_failure;
        ++alive;
    }
    CountedItem& operator=(const CountedItem&) = default;
    ~CountedItem() { --alive; }

    int value;
};

inline int CountedItem::alive = 0;
inline int CountedItem::copies_until_failure = -1;
