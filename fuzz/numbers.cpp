// Readers of numbers: a refused text gives zero, a taken one comes back from its printed form.
#include <math.h>

#include "fuzz/properties.h"
#include "tests/formats/exact_text.h"
#include "zorutils/formats/bignum_t.h"
#include "zorutils/formats/number_text.h"

using namespace zor_formats;

namespace {

template <class T>
void check_integer(bool (*read)(const WCHAR*, T&), const WCHAR* text)
{
    T value = 77, back = 0;
    if (!read(text, value)) {
        zor_fuzz::require(value == 0, "a refused integer is zero");
        return;
    }
    const auto printed = Int64ToString(static_cast<INT64>(value));
    zor_fuzz::require(read(printed.c_str(), back) && back == value,
                      "a printed integer reads back as itself");
}

void check_real(const WCHAR* text)
{
    double value = 77.0, back = 0.0;
    if (!StringToDouble(text, value)) {
        zor_fuzz::require(value == 0.0 && !signbit(value), "a refused number is zero");
        return;
    }
    if (!(fabs(value) < 1e8))
        return;
    for (int prec = 0; prec <= 6; prec += 3) {
        const auto printed = ConvertFloat(value, prec, false);
        zor_fuzz::require(StringToDouble(printed, back), "a printed number can be read");
        zor_fuzz::require(fabs(back - value) <= 0.5 * pow(10.0, -prec) + fabs(value) * 1e-15,
                          "a printed number is within half a unit of its last place");
    }
}

} // namespace

void zor_fuzz::numbers(const unsigned char* data, size_t size)
{
    const ExactText text(units_of(data, size));
    check_integer<int>(StringToInt, text.get());
    check_integer<LONG>(StringToLong, text.get());
    check_integer<short>(StringToShort, text.get());
    check_integer<unsigned int>(StringToUint, text.get());
    check_integer<INT64>(StringToInt64, text.get());
    check_real(text.get());
    require(is_str_int(text.get(), false) <= is_str_int(text.get(), true),
            "allowing a sign refuses nothing");
    require(is_str_double(text.get(), false, false) <= is_str_double(text.get(), true, true),
            "allowing signs and exponents refuses nothing");
    bignum_t<255> number;
    number = text.get();
    require(number.top < 255, "a big number stays in its digits");
}
