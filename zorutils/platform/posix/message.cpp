#include "zorutils/platform/posix/message.h"

#include "zorutils/platform/posix/codepage.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/memory.h"

#include <algorithm>
#include <new>
#include <stdio.h>
#include <string.h>
#include <string>
#include <utility>

namespace {

using Text = std::basic_string<WCHAR>;

constexpr DWORD error_no_work_done =
    235; // not in every set of headers, so without the system's name
constexpr int next_argument = -1;
constexpr int most_arguments = 99;
constexpr size_t longest_conversion = 30;
constexpr int greatest_width = 0xFFFF; // the system's own texts end there

// The list can only be read forwards: what was read is kept for the inserts that come back to it.
class Arguments
{
public:
    explicit Arguments(va_list* list) : m_list(list) {}

    bool get(int number, ULONG_PTR& value)
    {
        if (number == next_argument)
            number = m_read + 1;
        if (!m_list || number > most_arguments)
            return false;
        while (number > m_read)
            m_values[m_read++] = va_arg(*m_list, ULONG_PTR);
        value = m_values[number - 1];
        return true;
    }

    // On purpose: after a "*" the system forgets one argument, so that the value takes the number
    // of the last "*" and later inserts count one less. Texts written for it rely on that.
    void forget_one() { --m_read; }

private:
    va_list* m_list;
    ULONG_PTR m_values[most_arguments];
    int m_read = 0;
};

// One printf conversion, as read from the text behind its percent sign.
struct Conversion
{
    std::string flags;
    int width = 0;
    int precision = -1;
    enum class Size
    {
        normal,
        narrow,
        wide,
        wide64,
        pointer
    } size = Size::normal;
    WCHAR type = 0;
};

bool is_digit(WCHAR unit)
{
    return unit >= u'0' && unit <= u'9';
}

// Reads a run of digits, or "*" with the value that stands for it.
int read_number(const WCHAR*& at, const int*& stars)
{
    if (*at == u'*') {
        ++at;
        return *stars++;
    }
    int number = 0;
    for (; is_digit(*at); ++at)
        number = std::min(number * 10 + (*at - u'0'), greatest_width);
    return number;
}

bool is_one_of(const char* set, WCHAR unit)
{
    return unit && unit < 0x80 && strchr(set, static_cast<char>(unit));
}

// Reads the size modifiers; "I", "z" and "t" alone are modifiers only in front of an integer.
void read_size(const WCHAR*& at, Conversion& conversion)
{
    using Size = Conversion::Size;
    const auto has = [&at](const char16_t* text) {
        return std::char_traits<WCHAR>::compare(at, text, std::char_traits<WCHAR>::length(text)) ==
               0;
    };
    for (;;) {
        if (has(u"I64") || has(u"I32")) {
            conversion.size = at[1] == u'6' ? Size::wide64 : Size::normal;
            at += 2;
        } else if (is_one_of("Izt", *at) && is_one_of("diouxX", at[1]))
            conversion.size = Size::pointer;
        else if (*at == u'h')
            conversion.size = conversion.size == Size::narrow ? Size::normal : Size::narrow;
        else if (*at == u'l')
            conversion.size = conversion.size == Size::wide ? Size::wide64 : Size::wide;
        else if (*at == u'w')
            conversion.size = Size::wide;
        else if (*at == u'j')
            conversion.size = Size::wide64;
        else if (*at != u'L' && *at != u'F')
            return;
        ++at;
    }
}

// Reads a conversion from `at`, just behind its percent sign. Its type is 0 if the text ends first.
Conversion read_conversion(const WCHAR*& at, const int*& stars)
{
    Conversion conversion;
    while (is_one_of("-+ 0#", *at))
        conversion.flags += static_cast<char>(*at++);
    conversion.width = read_number(at, stars);
    if (conversion.width < 0) {
        conversion.flags += '-';
        conversion.width = -std::max(conversion.width, -greatest_width);
    }
    conversion.width = std::min(conversion.width, greatest_width);
    if (*at == u'.')
        conversion.precision = std::min(read_number(++at, stars), greatest_width);
    read_size(at, conversion);
    if (*at)
        conversion.type = *at++;
    return conversion;
}

void append_padded(Text& out, const Conversion& conversion, const Text& text)
{
    const size_t width = static_cast<size_t>(conversion.width);
    const size_t missing = width > text.size() ? width - text.size() : 0;
    const bool left = conversion.flags.find('-') != std::string::npos;
    const bool zeros = conversion.flags.find('0') != std::string::npos;
    if (!left)
        out.append(missing, zeros ? u'0' : u' ');
    out += text;
    if (left)
        out.append(missing, u' ');
}

// Bytes in the active code page.
Text widen(const char* text, size_t length)
{
    Text wide(length, 0); // no page has fewer bytes than units
    const int size = static_cast<int>(length);
    const int units = length ? MultiByteToWideChar(CP_ACP, 0, text, size, wide.data(), size) : 0;
    wide.resize(static_cast<size_t>(units));
    return wide;
}

bool is_narrow(const Conversion& conversion)
{
    const bool other_width = conversion.type == u'S' || conversion.type == u'C';
    if (conversion.size == Conversion::Size::narrow)
        return true;
    return other_width && conversion.size != Conversion::Size::wide;
}

void append_text(Text& out, const Conversion& conversion, ULONG_PTR value)
{
    const size_t most =
        conversion.precision < 0 ? Text::npos : static_cast<size_t>(conversion.precision);
    Text text;
    if (conversion.type == u'c' || conversion.type == u'C') {
        const char byte = static_cast<char>(value);
        text = is_narrow(conversion) ? widen(&byte, 1) : Text(1, static_cast<WCHAR>(value));
        text.resize(std::min(most, text.size()));
    } else if (value == 0) {
        text = Text(ZOR_W("(null)")).substr(0, most);
    } else if (is_narrow(conversion)) {
        const auto* source = reinterpret_cast<const char*>(value);
        text = widen(source, strnlen(source, most));
    } else {
        for (const auto* unit = reinterpret_cast<const WCHAR*>(value); text.size() < most && *unit;
             ++unit)
            text += *unit;
    }
    append_padded(out, conversion, text);
}

void append_integer(Text& out, const Conversion& conversion, ULONG_PTR value)
{
    using Size = Conversion::Size;
    const bool is_signed = conversion.type == u'd' || conversion.type == u'i';
    const bool is_pointer = conversion.type == u'p';
    const bool is_64 =
        conversion.size == Size::wide64 || conversion.size == Size::pointer || is_pointer;
    if (conversion.size == Size::narrow)
        value = is_signed ? static_cast<ULONG_PTR>(static_cast<short>(value))
                          : static_cast<USHORT>(value);
    else if (!is_64)
        value =
            is_signed ? static_cast<ULONG_PTR>(static_cast<int>(value)) : static_cast<UINT>(value);

    const std::string format =
        '%' + conversion.flags + "*.*ll" + (is_pointer ? 'X' : static_cast<char>(conversion.type));
    const int precision = is_pointer ? 2 * static_cast<int>(sizeof(void*)) : conversion.precision;
    const int length = snprintf(nullptr, 0, format.c_str(), conversion.width, precision, value);
    std::string number(static_cast<size_t>(length) + 1, '\0');
    snprintf(number.data(), number.size(), format.c_str(), conversion.width, precision, value);
    out.append(number.begin(), number.end() - 1);
}

// Formats what stands between the two "!" of an insert, as if a percent sign stood in front of it.
// Only the first conversion has a value; further ones get 0.
void append_converted(Text& out, const Text& format, const int* stars, ULONG_PTR value)
{
    const WCHAR* at = format.c_str();
    bool in_conversion = true;
    while (*at) {
        if (!in_conversion) {
            in_conversion = *at == u'%';
            if (!in_conversion)
                out += *at;
            ++at;
            continue;
        }
        const Conversion conversion = read_conversion(at, stars);
        in_conversion = false;
        if (is_one_of("diuoxXp", conversion.type))
            append_integer(out, conversion, std::exchange(value, 0));
        else if (is_one_of("cCsS", conversion.type))
            append_text(out, conversion, std::exchange(value, 0));
        else if (conversion.type) // not a conversion of the system's: it stands for itself
            out += conversion.type;
    }
}

// Formats the insert `number`; `at` stands behind its digits and is moved behind the insert.
bool append_insert(Text& out, const WCHAR*& at, int number, Arguments& arguments)
{
    Text format = ZOR_W("s");
    int stars[4] = {0, 0, 0, 0};
    int star_count = 0;
    ULONG_PTR value = 0;
    if (*at == u'!') {
        const WCHAR* begin = ++at;
        for (; *at && *at != u'!'; ++at) {
            if (*at != u'*')
                continue;
            if (star_count == 2 || !arguments.get(number, value))
                return false;
            stars[star_count++] = static_cast<int>(value);
            number = next_argument;
        }
        if (!*at || at - begin > static_cast<ptrdiff_t>(longest_conversion))
            return false;
        format.assign(begin, at++);
        if (star_count)
            arguments.forget_one();
    }
    if (!arguments.get(number, value))
        return false;
    append_converted(out, format, stars, value);
    return true;
}

int read_insert_number(const WCHAR*& at)
{
    int number = *at++ - u'0';
    if (is_digit(*at))
        number = number * 10 + (*at++ - u'0');
    return number;
}

// Handles what follows a percent sign. `at_end` is set by %0.
bool append_escape(Text& out, const WCHAR*& at, Arguments& arguments, bool& at_end)
{
    if (*at >= u'1' && *at <= u'9') {
        const int number = read_insert_number(at);
        return append_insert(out, at, number, arguments);
    }
    const WCHAR unit = *at;
    if (unit == 0)
        return false;
    ++at;
    switch (unit) {
    case u'0':
        at_end = true;
        break;
    case u'n':
        out += ZOR_W("\r\n");
        break;
    case u'r':
        out += u'\r';
        break;
    case u't':
        out += u'\t';
        break;
    default:
        out += unit;
        break;
    }
    return true;
}

bool format_text(Text& out, const WCHAR* at, Arguments& arguments)
{
    bool at_end = false;
    while (*at && !at_end) {
        const WCHAR unit = *at++;
        if (unit == u'%') {
            if (!append_escape(out, at, arguments, at_end))
                return false;
        } else if (unit == u'\r' || unit == u'\n') {
            if (unit == u'\r' && *at == u'\n')
                ++at;
            out += ZOR_W("\r\n");
        } else {
            out += unit;
        }
    }
    return true;
}

DWORD failed(DWORD error)
{
    SetLastError(error);
    return 0;
}

DWORD give_allocated(const Text& text, LPWSTR* result)
{
    const size_t bytes = (text.size() + 1) * sizeof(WCHAR);
    auto* copy = static_cast<LPWSTR>(LocalAlloc(LMEM_FIXED, bytes));
    if (!copy)
        return failed(ERROR_NOT_ENOUGH_MEMORY);
    memcpy(copy, text.c_str(), bytes);
    *result = copy;
    return static_cast<DWORD>(text.size());
}

DWORD give_in_buffer(const Text& text, LPWSTR buffer, DWORD size)
{
    if (size == 0)
        return failed(ERROR_INSUFFICIENT_BUFFER);
    const size_t length = std::min(text.size(), static_cast<size_t>(size) - 1);
    memcpy(buffer, text.data(), length * sizeof(WCHAR));
    buffer[length] = 0;
    if (length < text.size())
        return failed(ERROR_INSUFFICIENT_BUFFER);
    return text.empty() ? failed(error_no_work_done) : static_cast<DWORD>(length);
}

} // namespace

DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD, DWORD, LPWSTR buffer, DWORD size,
                     va_list* arguments)
try {
    const bool allocate = (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
    LPWSTR* result = allocate ? reinterpret_cast<LPWSTR*>(buffer) : nullptr;
    if (result)
        *result = nullptr;
    if ((flags & ~DWORD(FORMAT_MESSAGE_ALLOCATE_BUFFER)) != FORMAT_MESSAGE_FROM_STRING || !buffer ||
        !source)
        return failed(ERROR_INVALID_PARAMETER);

    Text text;
    Arguments list(arguments);
    if (!format_text(text, static_cast<const WCHAR*>(source), list))
        return failed(ERROR_INVALID_PARAMETER);
    if (!allocate)
        return give_in_buffer(text, buffer, size);
    return text.empty() ? failed(error_no_work_done) : give_allocated(text, result);
} catch (const std::bad_alloc&) {
    return failed(ERROR_NOT_ENOUGH_MEMORY);
}
