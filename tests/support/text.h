// tests/support/text.h: texts of either width in test code.
#pragma once

#include <stdio.h>

#include <string>
#include <type_traits>

#include "zorutils/zortext/zor_string.h"

namespace zor_test {

using Narrow = zor_text::CZorStringT<char>;
using Wide = zor_text::CZorStringT<WCHAR>;

template <class T>
using Text = std::basic_string<T>;

// An ASCII literal, zero characters included, in the width of the test.
template <class T, size_t N>
Text<T> lit(const char (&ascii)[N])
{
    return Text<T>(ascii, ascii + N - 1);
}

// A text as a test prints it: ASCII as it is, all else as \xHH or \uHHHH.
template <class T>
std::string shown(const T* text, size_t length)
{
    std::string out;
    for (size_t i = 0; i < length; ++i) {
        const auto unit = static_cast<unsigned>(
            static_cast<std::make_unsigned_t<std::conditional_t<sizeof(T) == 1, char, short>>>(
                text[i]));
        if (unit >= 0x20 && unit < 0x7F) {
            out += static_cast<char>(unit);
        } else {
            char escape[16];
            snprintf(escape, sizeof escape, sizeof(T) == 1 ? "\\x%02X" : "\\u%04X", unit);
            out += escape;
        }
    }
    return out;
}

template <class T>
std::string shown(const zor_text::CZorStringT<T>& text)
{
    return shown(text.c_str(), text.length());
}

template <class T>
std::string shown(const T* text)
{
    return text == nullptr ? "(null)" : shown(text, std::char_traits<T>::length(text));
}

// Whether the active code page is 1252, which the expectations of some tests are written in.
inline bool page_is_1252()
{
    return shown(Wide("\x80\xD0\xE9")) == "\\u20AC\\u00D0\\u00E9";
}

#define ZOR_NEEDS_PAGE_1252()                                                                      \
    if (!zor_test::page_is_1252())                                                                 \
    GTEST_SKIP() << "the active code page is another"

// The string type with its protected core in reach.
template <class T>
struct Core : zor_text::CZorStringT<T>
{
    using Base = zor_text::CZorStringT<T>;
    using Base::Base;
    using Base::operator=;
    using Base::AllocBeforeWrite;
    using Base::AllocBuffer;
    using Base::AllocCopy;
    using Base::AssignCopy;
    using Base::ConcatCopy;
    using Base::ConcatInPlace;
    using Base::CopyBeforeWrite;
    using Base::FreeData;
    using Base::get_afxChNil;
    using Base::get_afxDataNil;
    using Base::GetData;
    using Base::Init;
    using Base::Release;
    using Base::SafeStrlen;
    Core(const Base& source) : Base(source) {}
    Core() = default;
    LONG count() const { return GetData()->nRefCount; }
    bool is_nil() const { return GetData() == get_afxDataNil(); }
};

// The header of any string's block.
template <class T>
zor_text::CZorStringData<T>& block_of(const zor_text::CZorStringT<T>& text)
{
    return *(reinterpret_cast<zor_text::CZorStringData<T>*>(const_cast<T*>(text.c_str())) - 1);
}

} // namespace zor_test
