// Formatting of the string, resource strings and system strings.
#include <algorithm>
#include <memory>
#include <vector>

#include "zorutils/core/bad_allocation.h"
#include "zorutils/zortext/zor_string.h"
#include "zorutils/zortext/zor_string_traits_internal.h"

namespace zor_text {

// --- Format.

template <class T>
void CZorStringT<T>::Format(const T* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

template <class T>
void CZorStringT<T>::Format(unsigned int id, ...)
{
    CZorStringT format;
    format.LoadStringW(id);
    va_list arguments;
    va_start(arguments, id);
    FormatV(format.m_pChars, arguments);
    va_end(arguments);
}

namespace {

// One pass of the run-time's formatter over a copy of the list, which is used more than once.
template <class T>
int format_once(T* buffer, int size, const T* format, va_list arguments)
{
    va_list copy;
    va_copy(copy, arguments);
    const int result = TextCalls<T>::format(buffer, static_cast<size_t>(size), format, copy);
    va_end(copy);
    return result;
}

} // namespace

template <class T>
void CZorStringT<T>::FormatV(const T* format, va_list arguments)
{
    // A text of up to 2048 characters is measured first and takes a block of its exact size. A
    // longer one goes through growing buffers and is cut at the largest.
    constexpr int local_size = 2048;
    constexpr int last_size_to_grow = 32768;
    T local[local_size];
    int size = local_size;
    int result = format_once(local, local_size, format, arguments);
    if (result >= 0) {
        size = result;
        GetBuffer(size);
        result = size == 0 ? 0 : format_once(m_pChars, size, format, arguments);
    } else {
        while (result < 0 && size <= last_size_to_grow) {
            size *= 4;
            GetBuffer(size);
            result = format_once(m_pChars, size, format, arguments);
        }
    }
    if (result < 0 && size != 0)
        m_pChars[size] = 0;
    ReleaseBuffer(std::max(result, -1));
}

// --- FormatMessageW.

namespace {

struct LocalMemoryRelease
{
    void operator()(WCHAR* text) const { LocalFree(text); }
};

using LocalText = std::unique_ptr<WCHAR, LocalMemoryRelease>;

// Null on failure.
LocalText format_message(const WCHAR* format, va_list* arguments)
{
    WCHAR* text = nullptr;
    // The system allocates the result and stores its address through the buffer argument.
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_STRING, format, 0, 0,
                         reinterpret_cast<WCHAR*>(&text), 0, arguments);
    return LocalText(length == 0 ? nullptr : text);
}

LocalText format_message(const char* format, va_list* arguments)
{
    // The bytes go to the wide formatter unconverted, on purpose. The copy only sees to it that the
    // formatter finds its 16-bit terminator.
    const size_t bytes = strlen(format);
    std::vector<WCHAR> units(bytes / sizeof(WCHAR) + 2);
    memcpy(units.data(), format, bytes);
    return format_message(units.data(), arguments);
}

template <class T>
void assign_message(CZorStringT<T>& target, const LocalText& text)
{
    // Whatever the cause, also a bad format.
    if (text == nullptr)
        throw ZorBadAllocation();
    target = text.get();
}

} // namespace

template <class T>
void CZorStringT<T>::FormatMessageW(const T* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const LocalText text = format_message(format, &arguments);
    va_end(arguments);
    assign_message(*this, text);
}

template <class T>
void CZorStringT<T>::FormatMessageW(unsigned int id, ...)
{
    CZorStringT format;
    format.LoadStringW(id);
    va_list arguments;
    va_start(arguments, id);
    const LocalText text = format_message(format.m_pChars, &arguments);
    va_end(arguments);
    assign_message(*this, text);
}

// --- Numbered fields.

namespace detail {

CZorStringT<WCHAR> zor_safefmt_impl(const WCHAR* format, unsigned int count, ...)
{
    constexpr unsigned int most_arguments = 100;
    if (count > most_arguments)
        return CZorStringT<WCHAR>();
    const WCHAR* arguments[most_arguments];
    va_list list;
    va_start(list, count);
    for (unsigned int i = 0; i < count; ++i)
        arguments[i] = va_arg(list, const WCHAR*);
    va_end(list);

    CZorStringT<WCHAR> result, number;
    bool field_open = false;
    for (const WCHAR* at = format; *at != 0; ++at) {
        if (*at == '{') {
            if (field_open)
                result += *at;
            number.Empty();
            field_open = !field_open;
        } else if (*at == '}' && field_open) {
            const int field = _wtoi(number.c_str());
            if (field < 1 || static_cast<unsigned int>(field) > count)
                return CZorStringT<WCHAR>();
            result += arguments[field - 1];
            field_open = false;
        } else if (field_open) {
            number += *at;
        } else {
            result += *at;
        }
    }
    // A field that is still open is dropped without a word, on purpose.
    return result;
}

} // namespace detail

template class CZorStringT<char>;
template class CZorStringT<WCHAR>;

} // namespace zor_text
