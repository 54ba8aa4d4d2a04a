// Strings that cross the boundary between a host and a second shared library.
#include <gtest/gtest.h>

#include <new>
#include <utility>
#include <vector>

#include "tests/boundary/boundary_module.h"
#include "tests/support/text.h"

using namespace zor_test;

TEST(Boundary, StringsGoByValueAndComeBack)
{
    const Wide text(ZOR_W("P9"));
    const Wide longer = boundary::append_by_value(text, static_cast<WCHAR>('9'));
    EXPECT_EQ(shown(text), "P9");
    EXPECT_EQ(shown(longer), "P99");
    EXPECT_EQ(shown(boundary::append_by_value(Narrow("a"), 'b')), "ab");
    EXPECT_EQ(block_of(text).nRefCount, 1);
}

TEST(Boundary, StringsAreChangedByReference)
{
    Wide text(ZOR_W("ab"));
    const Wide other = text;
    boundary::double_in_place(text);
    EXPECT_EQ(shown(text), "abab");
    EXPECT_EQ(shown(other), "ab");
    Narrow narrow("x");
    boundary::double_in_place(narrow);
    EXPECT_EQ(shown(narrow), "xx");
}

TEST(Boundary, ACopyKeptByTheModuleSharesTheHostsBlock)
{
    Wide text(ZOR_W("shared"));
    boundary::keep(text);
    EXPECT_EQ(block_of(text).nRefCount, 2);
    const Wide back = boundary::kept();
    EXPECT_EQ(back.c_str(), text.c_str());
    EXPECT_EQ(block_of(text).nRefCount, 3);
    text.SetAt(0, 'S');
    EXPECT_EQ(shown(boundary::kept()), "shared");
    text.Empty();
    boundary::forget();
    EXPECT_EQ(block_of(back).nRefCount, 1);
}

TEST(Boundary, TheModuleFreesTheLastHolderOfAHostsBlock)
{
    boundary::keep(Wide(ZOR_W("made by the host")));
    EXPECT_EQ(shown(boundary::kept()), "made by the host");
    boundary::forget();
    EXPECT_TRUE(boundary::kept().empty());
    Wide text(ZOR_W("freed by the module"));
    boundary::release(text);
    EXPECT_TRUE(boundary::is_nil(text));
}

TEST(Boundary, LocksHoldOnBothSides)
{
    Wide text(ZOR_W("abc"));
    WCHAR* const buffer = boundary::lock(text);
    EXPECT_EQ(buffer, text.c_str());
    const Wide copy = text;
    EXPECT_NE(copy.c_str(), buffer);
    boundary::keep(text);
    EXPECT_NE(boundary::kept().c_str(), buffer);
    buffer[0] = 'X';
    boundary::unlock(text);
    const Wide shared = text;
    EXPECT_EQ(shared.c_str(), buffer);
    EXPECT_EQ(shown(boundary::kept()), "abc");
    boundary::forget();
    // Locked here, released there.
    Wide locked(ZOR_W("locked"));
    locked.LockBuffer();
    boundary::release(locked);
    EXPECT_EQ(locked.GetLength(), 0);
    EXPECT_EQ(block_of(locked).nRefCount, -1);
}

TEST(Boundary, BothSidesSeeOneNilBlock)
{
    EXPECT_EQ(boundary::nil_address(),
              static_cast<const void*>(zor_string_internal_data::g_afxNilStr));
    EXPECT_TRUE(boundary::is_nil(Wide()));
    EXPECT_TRUE(Wide(boundary::append_by_value(Wide(), static_cast<WCHAR>('x'))).GetLength() == 1);
}

TEST(Boundary, AnObjectMadeThereIsDestroyedHere)
{
    alignas(Wide) unsigned char memory[sizeof(Wide)];
    Wide* const text = boundary::construct_at(memory, ZOR_W("placed"));
    EXPECT_EQ(shown(*text), "placed");
    text->~Wide();
}

TEST(Boundary, ArraysOfStringsSurviveManyCrossings)
{
    std::vector<Wide> texts;
    for (int i = 0; i < 1000; ++i) {
        Wide text;
        text.Format(ZOR_W("P%d"), i);
        texts.push_back(boundary::append_by_value(std::move(text), static_cast<WCHAR>('!')));
    }
    EXPECT_EQ(shown(texts[999]), "P999!");
}

TEST(Boundary, LibraryExceptionsAreCaughtAcrossTwoModules)
{
    try {
        boundary::throw_bad_allocation();
        FAIL() << "nothing was thrown";
    } catch (const std::bad_alloc& error) {
        EXPECT_STREQ(error.what(), "bad allocation");
    }
}
