// The contract of the character classes: all 65,536 units, as on Windows.
#include <gtest/gtest.h>

#include <locale.h>

#include "zorutils/platform/crt.h"

namespace {

unsigned sum_of(int (*holds)(WCHAR))
{
    unsigned sum = 2166136261u;
    for (unsigned unit = 0; unit < 65536; ++unit) {
        const unsigned value = holds(static_cast<WCHAR>(unit)) != 0 ? 1 : 0;
        for (int shift = 0; shift < 32; shift += 8)
            sum = (sum ^ ((value >> shift) & 0xFF)) * 16777619u;
    }
    return sum;
}

int space(WCHAR unit)
{
    return iswspace(unit);
}

int alpha(WCHAR unit)
{
    return iswalpha(unit);
}

int digit(WCHAR unit)
{
    return iswdigit(unit);
}

} // namespace

TEST(CharacterClasses, EveryUnitIsAsOnWindows)
{
    EXPECT_EQ(sum_of(space), 0x0C580CD5u);
    EXPECT_EQ(sum_of(alpha), 0x7DEF3B64u);
    EXPECT_EQ(sum_of(digit), 0xF3B53634u);
}

TEST(CharacterClasses, NamedUnits)
{
    for (const unsigned unit :
         {0x09u, 0x0Du, 0x20u, 0xA0u, 0x1680u, 0x2003u, 0x2028u, 0x202Fu, 0x205Fu, 0x3000u})
        EXPECT_TRUE(iswspace(static_cast<WCHAR>(unit))) << unit;
    for (const unsigned unit :
         {0x00u, 0x08u, 0x1Cu, 0x85u, 0x180Eu, 0x200Bu, 0xFEFFu, 0xFF80u, 0xFFA0u})
        EXPECT_FALSE(iswspace(static_cast<WCHAR>(unit))) << unit;
    for (const unsigned unit : {0x30u, 0x39u, 0xB2u, 0x0660u, 0xFF10u})
        EXPECT_TRUE(iswdigit(static_cast<WCHAR>(unit))) << unit;
    EXPECT_FALSE(iswdigit(static_cast<WCHAR>('a')));
    for (const unsigned unit : {0x41u, 0x7Au, 0xE9u, 0x0416u, 0x4E2Du})
        EXPECT_TRUE(iswalpha(static_cast<WCHAR>(unit))) << unit;
    EXPECT_FALSE(iswalpha(static_cast<WCHAR>('1')));
}

TEST(CharacterClasses, CaseKnowsAsciiAlone)
{
    for (unsigned unit = 0; unit < 65536; ++unit) {
        const bool lower = unit >= 'a' && unit <= 'z';
        const bool upper = unit >= 'A' && unit <= 'Z';
        ASSERT_EQ(static_cast<unsigned>(towupper(static_cast<WCHAR>(unit))),
                  lower ? unit - 32 : unit);
        ASSERT_EQ(static_cast<unsigned>(towlower(static_cast<WCHAR>(unit))),
                  upper ? unit + 32 : unit);
    }
}
