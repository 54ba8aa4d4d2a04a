#include "zorutils/formats/point_names.h"

#include "zorutils/formats/bignum_t.h"
#include "zorutils/formats/point_names_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

// ASCII alone: a point name counts in no other script.
bool is_digit(WCHAR c)
{
    return c >= '0' && c <= '9';
}

// Where the digits at the end of the name begin; the length if there are none.
int trailing_digits(const CZorStringT<WCHAR>& name)
{
    int start = name.GetLength();
    while (start > 0 && is_digit(name[start - 1]))
        --start;
    return start;
}

struct PointNameTail
{
    int numberStart; // the first significant digit of the trailing digits, or the length
    int length;
    bool hasLeadingZero; // the trailing digits begin with "0"
};

PointNameTail find_tail(const CZorStringT<WCHAR>& name)
{
    const int run = trailing_digits(name);
    PointNameTail tail = {run, name.GetLength(), false};
    while (tail.numberStart < tail.length && name[tail.numberStart] == '0')
        ++tail.numberStart;
    tail.hasLeadingZero = tail.numberStart > run;
    return tail;
}

} // namespace

bool DoIncPtno(CZorStringT<WCHAR>& name, int increment)
{
    if (increment == 0)
        return false;
    PointNameTail tail = find_tail(name);
    bignum_t<255> number, step;
    int old_top = -1;
    if (tail.numberStart < tail.length) {
        number = name.c_str() + tail.numberStart;
        old_top = number.top;
    } else {
        number = 0;
    }
    step = increment;
    number += step;
    if (number.isNaN() || number.isNegative())
        return false;
    constexpr unsigned int most_digits = 256;
    WCHAR digits[most_digits + 1];
    unsigned int size = most_digits + 1;
    if (!number.cast2s(digits, size))
        return false;
    // The new digit takes the place of one leading zero, never of more.
    if (tail.hasLeadingZero && number.top > old_top)
        --tail.numberStart;
    CZorStringT<WCHAR> next = name.Left(tail.numberStart);
    next += digits;
    name = next;
    return true;
}

bool IncPtnoInt64(CZorStringT<WCHAR>& name, int increment)
{
    if (increment == 0)
        return false;
    const int length = name.GetLength();
    int start = trailing_digits(name);
    CZorStringT<WCHAR> number;
    if (start == length) {
        number.Format(ZOR_W("%d"), increment);
        name += number;
        return true;
    }
    // The head of a longer run is frozen, on purpose: 18 digits are what 64 bits hold for certain.
    constexpr int most_digits = 18;
    if (length - start > most_digits)
        start = length - most_digits;
    INT64 value = 0;
    swscanf(name.c_str() + start, ZOR_W("%I64d"), &value);
    value += increment;
    if (value < 0)
        return false;
    CZorStringT<WCHAR> format(ZOR_W("%I64d"));
    if (name[start] == '0')
        format.Format(ZOR_W("%%0%dI64d"), length - start);
    number.Format(format.c_str(), value);
    CZorStringT<WCHAR> next = name.Left(start);
    next += number;
    name = next;
    return true;
}

bool IsAdmisibleCharacter(WCHAR c)
{
    return c == '_' || is_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsValidName(const CZorStringT<WCHAR>& name)
{
    constexpr int longest_name = 40;
    if (name.IsEmpty() || name.GetLength() > longest_name)
        return false;
    for (int i = 0; i < name.GetLength(); ++i)
        if (!IsAdmisibleCharacter(name[i]))
            return false;
    return true;
}

bool IsValidFilename(CZorStringT<WCHAR>& name)
{
    return IsValidName(name);
}

const CZorStringT<WCHAR> MakeNameCorrect(const CZorStringT<WCHAR>& name, int maxLength)
{
    static const WCHAR harmful[] = ZOR_W("!,?%*@#$^&'\"\\/|~;[]{}()<>`\t\r\n+=");
    CZorStringT<WCHAR> correct = name.GetLength() > maxLength ? name.Left(maxLength) : name;
    for (int i = 0; i < correct.GetLength(); ++i)
        if (correct[i] != 0 && wcschr(harmful, correct[i]) != nullptr)
            correct.SetAt(i, '_');
    return correct;
}

const CZorStringT<WCHAR> DoubleAmpersandForDisplay(const CZorStringT<WCHAR>& text)
{
    CZorStringT<WCHAR> shown;
    int out = 0;
    for (int in = 0; in < text.GetLength(); ++in, ++out) {
        shown.Insert(out, text[in]);
        // Index GetLength() is the terminator.
        if (text[in] == '&' && text[in + 1] != '&' && (in == 0 || text[in - 1] != '&')) {
            // At the input's index, on purpose.
            shown.Insert(in, WCHAR('&'));
            ++out;
        }
    }
    return shown;
}

} // namespace zor_formats
