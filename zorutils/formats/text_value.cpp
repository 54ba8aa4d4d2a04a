#include "zorutils/formats/text_value.h"

#include "zorutils/formats/value_lists.h"
#include "zorutils/formats/value_lists_internal.h"
#include "zorutils/platform/crt.h"

namespace zor_formats {

namespace {

template <class Test>
const WCHAR* skip_while(const WCHAR* text, Test test)
{
    while (*text != 0 && test(*text))
        ++text;
    return text;
}

bool is_space(WCHAR c)
{
    return iswspace(c) != 0;
}

bool is_digit(WCHAR c)
{
    return iswdigit(c) != 0;
}

} // namespace

TTextValType getTextValType(const WCHAR* text)
{
    if (text == nullptr)
        return ttvEmpty;
    const WCHAR* const first = skip_while(text, is_space);
    if (*first == 0)
        return ttvEmpty;
    const WCHAR* at = skip_while(*first == '-' ? first + 1 : first, is_digit);
    if (*at == 0)
        return ttvInteger;

    if (CheckFormat(text, ZOR_W("9999-99-99"))) {
        if (IsDateText(text))
            return ttvDate;
    } else if (CheckFormat(text, ZOR_W("9999-99-99 99:99:99")) && IsDateTimeText(text)) {
        return ttvDateTime;
    }

    const bool point = *at == '.' || *at == ',';
    if (point) {
        const bool in_front = at == first;
        at = skip_while(at + 1, is_digit);
        if (in_front && *at == 0 && at == first + 1)
            return ttvText;
    }
    if (*skip_while(at, is_space) != 0)
        return ttvText;
    return point ? ttvReal : ttvInteger;
}

} // namespace zor_formats
