// Strings from resources by their number, and system strings.
#include <gtest/gtest.h>

#include <string.h>

#include <algorithm>

#include "tests/support/low_memory.h"
#include "tests/support/text.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zortext/resource_modules.h"

using namespace zor_test;
using zor_text::AfxLoadString;

namespace {

template <class T>
const T* as_pointer(uintptr_t number)
{
    return reinterpret_cast<const T*>(number);
}

class StringResources : public testing::Test
{
protected:
    void SetUp() override
    {
        static const HINSTANCE module = zor_text::LoadResourceModule(ZOR_W(ZOR_TEST_STRINGS_A));
        m_module = module;
        ASSERT_TRUE(zor_text::AddResourceModule(m_module));
    }
    void TearDown() override { zor_text::RemoveResourceModule(m_module); }

private:
    HINSTANCE m_module = nullptr;
};

} // namespace

// --- By number.

TEST_F(StringResources, WideLoadTellsSuccessByOneAndNarrowByZero)
{
    Wide wide(ZOR_W("old"));
    EXPECT_EQ(wide.LoadStringW(1), 1);
    EXPECT_EQ(shown(wide), "first of a");
    EXPECT_EQ(wide.LoadStringW(5000), 0);
    EXPECT_EQ(shown(wide), "");

    // Turned around on purpose: hosts test the narrow one this way.
    Narrow narrow("old");
    EXPECT_EQ(narrow.LoadStringW(1), 0);
    EXPECT_EQ(shown(narrow), "first of a");
    EXPECT_EQ(narrow.LoadStringW(5000), 1);
    EXPECT_EQ(shown(narrow), "");
}

TEST_F(StringResources, ALongTextLoadsWholeInBothWidths)
{
    for (const auto& [id, length] :
         {std::pair(500u, 300), {501u, 255}, {502u, 256}, {503u, 511}, {504u, 512}}) {
        Wide wide;
        EXPECT_EQ(wide.LoadStringW(id), 1);
        EXPECT_EQ(wide.GetLength(), length);
        Narrow narrow;
        EXPECT_EQ(narrow.LoadStringW(id), 0);
        EXPECT_EQ(narrow.GetLength(), length);
    }
}

TEST_F(StringResources, ALoadedTextEndsAtItsFirstZero)
{
    Wide wide;
    EXPECT_EQ(wide.LoadStringW(102), 1);
    EXPECT_EQ(shown(wide), "left");
}

TEST_F(StringResources, APointerBelow65536IsANumberToTheConstructorsOfTheSameWidth)
{
    EXPECT_EQ(shown(Wide(as_pointer<WCHAR>(16))), "sixteen");
    EXPECT_EQ(shown(Narrow(as_pointer<char>(16))), "sixteen");
    EXPECT_EQ(shown(Wide(as_pointer<WCHAR>(65535))), "the last of 16 bits");
    EXPECT_EQ(shown(Wide(as_pointer<WCHAR>(5000))), "") << "a number that isn't there";
    EXPECT_EQ(shown(Narrow(as_pointer<char>(5000))), "");
}

TEST_F(StringResources, TheValue65536IsAPointer)
{
    void* const page = page_at_65536();
    if (page == nullptr)
        GTEST_SKIP() << "the system gives no memory there";
    memcpy(page, "text", 5);
    EXPECT_EQ(shown(Narrow(as_pointer<char>(65536))), "text");
    const WCHAR wide[] = ZOR_W("wide text");
    memcpy(page, wide, sizeof wide);
    EXPECT_EQ(shown(Wide(as_pointer<WCHAR>(65536))), "wide text");
}

TEST_F(StringResources, AssignmentKnowsNoNumbers)
{
    // A small value would be read from; where low memory can be had, that is seen to happen.
    void* const page = page_at_65536();
    if (page == nullptr)
        GTEST_SKIP() << "the system gives no memory there";
    const WCHAR wide[] = ZOR_W("read");
    memcpy(page, wide, sizeof wide);
    Wide text;
    text = as_pointer<WCHAR>(65536);
    EXPECT_EQ(shown(text), "read");
}

TEST_F(StringResources, FormatsComeByNumber)
{
    Wide wide;
    wide.Format(402u, 7);
    EXPECT_EQ(shown(wide), "7 pieces");
    Narrow narrow;
    narrow.Format(402u, 7);
    EXPECT_EQ(shown(narrow), "7 pieces");
    wide.FormatMessageW(401u, 3, ZOR_W("two"));
    EXPECT_EQ(shown(wide), "two of 3");
    // The narrow form hands its bytes to the system's wide call, by number as by text.
    Narrow direct;
    direct.FormatMessageW("%2 of %1!d!", 3, "two");
    narrow.FormatMessageW(401u, 3, "two");
    EXPECT_EQ(shown(narrow), shown(direct));
    wide.Format(5000u, 7);
    EXPECT_EQ(shown(wide), "") << "the format isn't there";
}

// --- Into buffers.

TEST_F(StringResources, AWideBufferTakesWhatFits)
{
    WCHAR buffer[20];
    std::fill(std::begin(buffer), std::end(buffer), WCHAR{'#'});
    EXPECT_EQ(AfxLoadString(1, buffer, 6), 5);
    EXPECT_EQ(shown(buffer, 7), "first\\u0000#");
    EXPECT_EQ(AfxLoadString(1, buffer, 11), 10);
    EXPECT_EQ(shown(buffer), "first of a");
    EXPECT_EQ(AfxLoadString(1, buffer, 1), 0);
    EXPECT_EQ(shown(buffer), "");
}

TEST_F(StringResources, ANarrowBufferTakesAllOrNothing)
{
    char buffer[20];
    memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(AfxLoadString(1, buffer, 11), 10);
    EXPECT_EQ(shown(buffer), "first of a");
    EXPECT_EQ(AfxLoadString(1, buffer, 10), 0) << "one byte short";
    EXPECT_EQ(shown(buffer), "");
    EXPECT_EQ(AfxLoadString(1, buffer, 1), 0);
    EXPECT_EQ(shown(buffer), "");
}

TEST_F(StringResources, NoBufferGetsNothing)
{
    WCHAR wide[2] = {'#', '#'};
    char narrow[2] = {'#', '#'};
    EXPECT_EQ(AfxLoadString(1, wide, 0), 0);
    EXPECT_EQ(AfxLoadString(1, narrow, 0), 0);
    EXPECT_EQ(AfxLoadString(1, static_cast<WCHAR*>(nullptr), 10), 0);
    EXPECT_EQ(AfxLoadString(1, static_cast<char*>(nullptr), 10), 0);
    EXPECT_EQ(wide[0], '#');
    EXPECT_EQ(narrow[0], '#');
    // A number that isn't there leaves an empty text.
    EXPECT_EQ(AfxLoadString(5000, wide, 2), 0);
    EXPECT_EQ(AfxLoadString(5000, narrow, 2), 0);
    EXPECT_EQ(wide[0], 0);
    EXPECT_EQ(narrow[0], 0);
}

TEST_F(StringResources, LoadedTextsAreConvertedByTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    Narrow narrow;
    EXPECT_EQ(narrow.LoadStringW(100), 0);
    EXPECT_EQ(shown(narrow),
              shown(Narrow(ZOR_W("\u017Dlu\u0165ou\u010Dk\u00FD k\u016F\u0148 \u20AC"))));
}

// --- System strings.

TEST(SystemStrings, HoldTheWholeTextWithItsZeroes)
{
    const WCHAR units[] = {'a', 0, 'b'};
    const Wide wide(units, 3);
    WCHAR* const text = wide.AllocSysString();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ(shown(text, 4), "a\\u0000b\\u0000");
    SysFreeString(text);

    WCHAR* const from_narrow = Narrow("a\0b", 3).AllocSysString();
    EXPECT_EQ(SysStringLen(from_narrow), 3u);
    EXPECT_EQ(shown(from_narrow, 4), "a\\u0000b\\u0000");
    SysFreeString(from_narrow);
}

TEST(SystemStrings, OfAnEmptyTextAreThereAndEmpty)
{
    WCHAR* const wide = Wide().AllocSysString();
    WCHAR* const narrow = Narrow().AllocSysString();
    ASSERT_NE(wide, nullptr);
    ASSERT_NE(narrow, nullptr);
    EXPECT_EQ(SysStringLen(wide), 0u);
    EXPECT_EQ(SysStringLen(narrow), 0u);
    EXPECT_EQ(narrow[0], 0);
    SysFreeString(wide);
    SysFreeString(narrow);
}

TEST(SystemStrings, ReplaceAnOlderOne)
{
    WCHAR* text = SysAllocString(ZOR_W("a long old text"));
    EXPECT_EQ(Wide(ZOR_W("new")).SetSysString(&text), text);
    EXPECT_EQ(shown(text), "new");
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ(Narrow("narrow").SetSysString(&text), text);
    EXPECT_EQ(shown(text), "narrow");
    EXPECT_EQ(SysStringLen(text), 6u);
    SysFreeString(text);
}

TEST(SystemStrings, OfNarrowTextsAreConvertedByTheActiveCodePage)
{
    ZOR_NEEDS_PAGE_1252();
    WCHAR* const text = Narrow("\x80\xE9").AllocSysString();
    EXPECT_EQ(shown(text), "\\u20AC\\u00E9");
    SysFreeString(text);
}
