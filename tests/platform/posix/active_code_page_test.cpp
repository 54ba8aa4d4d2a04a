// Other active code pages than the default, set by the host.
#include "zorutils/platform/posix/active_code_page.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

using namespace zor_test;
using zor::platform::active_code_page;
using zor::platform::set_active_code_page;

namespace {

class ActiveCodePage : public testing::Test
{
protected:
    void TearDown() override { set_active_code_page(m_before); }

private:
    const UINT m_before = active_code_page();
};

} // namespace

TEST_F(ActiveCodePage, UnknownPagesLeaveItAsItIs)
{
    const UINT before = active_code_page();
    for (const UINT page : {0u, 1u, 1200u, 99999u})
        EXPECT_FALSE(set_active_code_page(page)) << page;
    EXPECT_EQ(active_code_page(), before);
}

TEST_F(ActiveCodePage, CentralEuropeanTextsConvertBothWays)
{
    ASSERT_TRUE(set_active_code_page(1250));
    const WCHAR wide[] = {0x0159, 0x011B, 0x010D, 0x00E9, 0x00F1, 0};
    EXPECT_EQ(shown(Narrow(wide)), "\\xF8\\xEC\\xE8\\xE9n");
    EXPECT_EQ(shown(Wide("\xF8\xEC\xE8\xE9")), "\\u0159\\u011B\\u010D\\u00E9");
}

TEST_F(ActiveCodePage, DoubleByteTextsConvertInEveryForm)
{
    ASSERT_TRUE(set_active_code_page(932));
    const WCHAR wide[] = {0x6E2C, 'A', 0x91CF, 0};
    EXPECT_EQ(shown(Narrow(wide)), "\\x91\\xAAA\\x97\\xCA");
    EXPECT_EQ(shown(Narrow(wide, 1)), "\\x91\\xAA");
    EXPECT_EQ(shown(Wide("\x91\xAA"
                         "A\x97\xCA")),
              "\\u6E2CA\\u91CF");
    EXPECT_EQ(shown(Wide("\x91\xAA"
                         "A",
                         2)),
              "\\u6E2C");
    Narrow narrow;
    narrow = wide;
    EXPECT_EQ(narrow.GetLength(), 5);
    Wide back;
    back = narrow.c_str();
    EXPECT_EQ(back.Compare(wide), 0);
    // A lead byte without its second half is the page's default character.
    EXPECT_EQ(shown(Wide("A\x91")), "A\\u30FB");
    // A character put in by its value is no conversion, whatever the page.
    Wide byte;
    byte = '\x91';
    EXPECT_EQ(shown(byte), "\\uFF91");
}

TEST_F(ActiveCodePage, Utf8CanBeActive)
{
    ASSERT_TRUE(set_active_code_page(65001));
    const WCHAR wide[] = {0x00B0, 0xD83D, 0xDE00, 0};
    EXPECT_EQ(shown(Narrow(wide)), "\\xC2\\xB0\\xF0\\x9F\\x98\\x80");
    EXPECT_EQ(Wide(Narrow(wide).c_str()).Compare(wide), 0);
}
