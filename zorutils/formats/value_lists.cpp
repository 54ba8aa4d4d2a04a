#include "zorutils/formats/value_lists.h"

#include "zorutils/formats/number_text_internal.h"
#include "zorutils/formats/value_lists_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

int length_of(const WCHAR* text)
{
    return text == nullptr ? 0 : static_cast<int>(wcslen(text));
}

CZorStringT<WCHAR> clean_item(CZorStringT<WCHAR> item)
{
    item.Trim();
    item.Remove('\r');
    item.Remove('\n');
    return item;
}

} // namespace

bool CheckFormat(const WCHAR* text, const WCHAR* mask)
{
    const int length = length_of(text);
    if (length != length_of(mask))
        return false;
    for (int i = 0; i < length; ++i) {
        const bool fits =
            mask[i] == '9' ? iswdigit(text[i]) != 0 || iswalpha(text[i]) != 0 : text[i] == mask[i];
        if (!fits)
            return false;
    }
    return true;
}

bool IsDateText(const WCHAR* text)
{
    StringArray pieces;
    ParseDelimitersValues(text, pieces, ZOR_W("-"));
    if (pieces.GetSize() < 3 || pieces[2].IsEmpty())
        return false;
    const int month = TextToIntOrZero(pieces[1]);
    const int day = TextToIntOrZero(pieces[2]);
    return month >= 1 && month <= 12 && day >= 1 && day <= (month == 2 ? 29 : 31);
}

bool IsDateTimeText(const WCHAR* text)
{
    StringArray halves;
    ParseDelimitersValues(text, halves, ZOR_W(" "));
    if (halves.GetSize() < 2 || !IsDateText(halves[0]))
        return false;
    StringArray pieces;
    ParseDelimitersValues(halves[1], pieces, ZOR_W(":"));
    return pieces.GetSize() >= 3 && TextToIntOrZero(pieces[0]) <= 24 &&
           TextToIntOrZero(pieces[1]) <= 59 && TextToIntOrZero(pieces[2]) <= 59;
}

bool ParseDelimitersValues(const CZorStringT<WCHAR>& text, StringArray& values,
                           const CZorStringT<WCHAR>& delimiters)
{
    // Copies: either text may be an item of the array, which moves as it grows.
    const CZorStringT<WCHAR> whole = text;
    const CZorStringT<WCHAR> split_at = delimiters;
    const int length = whole.GetLength();
    int start = 0;
    do {
        const WCHAR* const rest = whole.c_str() + start;
        const WCHAR* const found = wcspbrk(rest, split_at.c_str());
        const bool splits = found != nullptr && found != rest;
        const int count = splits ? static_cast<int>(found - rest) : length - start;
        values.Add(clean_item(whole.Mid(start, count)));
        start = splits ? start + count + 1 : length;
    } while (start < length);
    return true;
}

bool ParseValues(const CZorStringT<WCHAR>& text, StringArray& values, char delimiter,
                 const CZorStringT<WCHAR>& forbidden)
{
    const CZorStringT<WCHAR> whole = text;
    const CZorStringT<WCHAR> refused = forbidden;
    const int length = whole.GetLength();
    int start = 0;
    do {
        const int found = whole.Find(static_cast<WCHAR>(delimiter), start);
        const int end = found > 0 ? found : length;
        const CZorStringT<WCHAR> item = clean_item(whole.Mid(start, end - start));
        if (item.FindOneOf(refused) >= 0)
            return false;
        values.Add(item);
        start = found > 0 ? found + 1 : length;
    } while (start < length);
    return true;
}

const CZorStringT<WCHAR> StringArrayToString(const StringArray& values, WCHAR delimiter)
{
    int length = values.GetSize();
    for (const CZorStringT<WCHAR>& value : values)
        length += value.GetLength();
    CZorStringT<WCHAR> joined;
    joined.GetBuffer(length);
    joined.ReleaseBuffer(0);
    for (int i = 0; i < values.GetSize(); ++i) {
        if (i > 0)
            joined += delimiter;
        joined += values[i];
    }
    return joined;
}

bool IsStringInStringArray(const StringArray& values, const CZorStringT<WCHAR>& text)
{
    for (const CZorStringT<WCHAR>& value : values)
        if (value.Compare(text) == 0)
            return true;
    return false;
}

bool IsUIntInUIntArray(const UIntArray& values, int value)
{
    for (unsigned int held : values)
        if (held == static_cast<unsigned int>(value))
            return true;
    return false;
}

} // namespace zor_formats
