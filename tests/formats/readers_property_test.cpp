// Readers of outside text, on random and mutated texts: whatever comes in, they stay inside the
// text and keep their promises.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/formats/double_bits.h"
#include "tests/formats/exact_text.h"
#include "tests/support/text.h"
#include "zorutils/formats/angle_text.h"
#include "zorutils/formats/bignum_t.h"
#include "zorutils/formats/number_text.h"
#include "zorutils/formats/point_names.h"
#include "zorutils/formats/text_value.h"
#include "zorutils/formats/value_lists.h"

using namespace zor_formats;
using zor_test::shown;
using zor_test::Wide;

namespace {

typedef std::basic_string<WCHAR> Units;

// The same sequence on every target and run.
class Random
{
public:
    uint32_t below(uint32_t limit)
    {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(m_state >> 33) % limit;
    }

private:
    uint64_t m_state = 20131001;
};

WCHAR random_unit(Random& random)
{
    // Mostly what the readers look for, at times anything but the terminator.
    static const WCHAR likely[] =
        ZOR_W("0123456789012345678900..,,--+eE \t\r\n\u00B0\u00B0''\"\":xNSPinfa#/&*\u0663\uFF15");
    constexpr uint32_t likely_count = sizeof likely / sizeof likely[0] - 1;
    if (random.below(16) == 0)
        return static_cast<WCHAR>(1 + random.below(0xFFFF));
    return likely[random.below(likely_count)];
}

Units random_text(Random& random)
{
    static const WCHAR* const seeds[] = {
        ZOR_W("12\u00B030'45.05\""),  ZOR_W("123.4530"),
        ZOR_W("-12 30 45.25"),        ZOR_W("1,234.5e-7"),
        ZOR_W("2013-10-01"),          ZOR_W("STA0099"),
        ZOR_W("-2147483648"),         ZOR_W("12.5\u00B0"),
        ZOR_W("2013-10-01 24:59:59"), ZOR_W("a;b;;c,d"),
        ZOR_W("9223372036854775807"),
    };
    constexpr uint32_t seed_count = sizeof seeds / sizeof seeds[0];
    Units text;
    if (random.below(3) != 0)
        text = seeds[random.below(seed_count)];
    for (uint32_t changes = random.below(12); changes > 0; --changes) {
        const size_t at = random.below(static_cast<uint32_t>(text.size()) + 1);
        switch (random.below(4)) {
        case 0:
            text.erase(at, 1);
            break;
        case 1:
            if (at < text.size())
                text[at] = random_unit(random);
            break;
        default:
            text.insert(at, 1 + random.below(random.below(20) == 0 ? 40 : 2), random_unit(random));
        }
    }
    return text;
}

void check_angle_readers(const ExactText& text)
{
    double degrees = 77.0;
    const WCHAR* rest = nullptr;
    const bool read = StringToDegree(text.get(), degrees, &rest);
    if (read) {
        EXPECT_GE(rest, text.get());
        EXPECT_LE(rest, text.get() + text.length());
    } else {
        EXPECT_EQ(rest, nullptr);
        EXPECT_SAME_DOUBLE(degrees, 0.0);
    }
    EXPECT_EQ(is_str_degree(text.get()), read);
    bool flagged = true;
    if (!CheckDegreeSuffix(text.get(), ZOR_W("NS"), ZOR_W("S"), flagged)) {
        EXPECT_FALSE(flagged);
    }
}

template <class T>
void check_integer_reader(bool (*read)(const WCHAR*, T&), const WCHAR* text)
{
    T value = 77;
    if (!read(text, value)) {
        EXPECT_EQ(value, T(0));
    }
}

void check_number_readers(const ExactText& text)
{
    double value = 77.0;
    if (!StringToDouble(text.get(), value)) {
        EXPECT_SAME_DOUBLE(value, 0.0);
    }
    check_integer_reader<int>(StringToInt, text.get());
    check_integer_reader<LONG>(StringToLong, text.get());
    check_integer_reader<short>(StringToShort, text.get());
    check_integer_reader<unsigned int>(StringToUint, text.get());
    check_integer_reader<INT64>(StringToInt64, text.get());
    // Allowing more never refuses what passed before.
    const bool plain = is_str_double(text.get(), false, false);
    EXPECT_LE(plain, is_str_double(text.get(), true, false));
    EXPECT_LE(plain, is_str_double(text.get(), false, true));
    EXPECT_LE(is_str_notempty_double(text.get(), true), is_str_double(text.get(), true, true));
    EXPECT_LE(is_str_int(text.get(), false), is_str_int(text.get(), true));
    if (is_str_int(text.get(), true)) {
        EXPECT_TRUE(is_str_double(text.get(), true, false));
    }
    bignum_t<255> number;
    number = text.get();
    EXPECT_LT(number.top, 255);
}

void check_names_and_lists(const ExactText& text)
{
    EXPECT_TRUE(CheckFormat(text.get(), text.get()));
    const TTextValType type = getTextValType(text.get());
    EXPECT_EQ(type == ttvDate, CheckFormat(text.get(), ZOR_W("9999-99-99")) && type != ttvText);

    const Wide name = text.get();
    Wide next = name;
    if (DoIncPtno(next, 1)) {
        EXPECT_GE(next.GetLength(), name.GetLength());
        Wide back = next;
        EXPECT_TRUE(DoIncPtno(back, -1));
    } else {
        EXPECT_EQ(shown(next), shown(name));
    }
    EXPECT_LE(MakeNameCorrect(name, 10).GetLength(), 10);
    EXPECT_GE(DoubleAmpersandForDisplay(name).GetLength(), name.GetLength());

    StringArray values;
    EXPECT_TRUE(ParseDelimitersValues(name, values, ZOR_W(",;")));
    EXPECT_GE(values.GetSize(), 1);
    for (const Wide& value : values)
        EXPECT_LT(value.FindOneOf(ZOR_W("\r\n")), 0);
    values.RemoveAll();
    if (ParseValues(name, values, ';', ZOR_W(","))) {
        for (const Wide& value : values)
            EXPECT_LT(value.Find(','), 0);
    }
}

} // namespace

TEST(Readers, KeepTheirPromisesOnAnyText)
{
    Random random;
    for (int i = 0; i < 40000; ++i) {
        const ExactText text(random_text(random));
        SCOPED_TRACE(shown(text.get()));
        check_angle_readers(text);
        check_number_readers(text);
        check_names_and_lists(text);
        if (testing::Test::HasFailure())
            return;
    }
}

TEST(Readers, KeepTheirPromisesOnEveryStartOfAText)
{
    for (const WCHAR* whole : {ZOR_W("-12\u00B030'45.05\" E"), ZOR_W("-12.304525"),
                               ZOR_W("2013-10-01 08:29:35"), ZOR_W("-1.5e-10x"), ZOR_W("P0099")}) {
        const Units units(whole);
        for (size_t length = 0; length <= units.size(); ++length) {
            const ExactText text(units.substr(0, length));
            SCOPED_TRACE(shown(text.get()));
            check_angle_readers(text);
            check_number_readers(text);
            check_names_and_lists(text);
        }
    }
}

TEST(Readers, TakeLongTexts)
{
    constexpr size_t length = 20000;
    for (const WCHAR unit : Units(ZOR_W("09-., e'\"\u00B0;&x"))) {
        const ExactText text(Units(length, static_cast<WCHAR>(unit)));
        check_angle_readers(text);
        check_number_readers(text);
    }
    const ExactText fraction(Units(ZOR_W("12\u00B030'45.")) + Units(length, '0') +
                             Units(ZOR_W("5\"")));
    double degrees = 0.0;
    EXPECT_TRUE(StringToDegree(fraction.get(), degrees, nullptr));
    EXPECT_SAME_DOUBLE(degrees, (45.0 / 60.0 + 30.0) / 60.0 + 12.0);
}
