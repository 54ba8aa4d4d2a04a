#include "zorutils/platform/posix/crt_format.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>

#include "zorutils/platform/posix/float_text.h"

namespace {

struct Spec
{
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1; // none
    enum class Size
    {
        Normal,
        Short,
        Long,
        Wide,
        LongLong,
        Pointer
    } size = Size::Normal;
};

// The list as an object, so that it can be handed by reference.
struct Arguments
{
    va_list list;
};

template <class T>
class Formatter
{
public:
    Formatter(T* buffer, size_t size) : m_buffer(buffer), m_size(size) {}

    int run(const T* format, Arguments& arguments);

private:
    template <class C>
    void text(const C* text, const Spec& spec);
    void number(const std::string& sign, const std::string& digits, const Spec& spec);
    void integer(T conversion, const Spec& spec, Arguments& arguments);
    void floating(T conversion, const Spec& spec, Arguments& arguments);
    void character(bool wide, const Spec& spec, Arguments& arguments);
    bool convert(T conversion, const Spec& spec, Arguments& arguments);

    void put(T c)
    {
        if (m_count < m_size)
            m_buffer[m_count] = c;
        ++m_count;
    }
    void fill(int count, char c)
    {
        for (; count > 0; --count)
            put(static_cast<T>(c));
    }

    T* m_buffer;
    size_t m_size;
    size_t m_count = 0;
    bool m_failed = false;
};

// --- What a field of the format asks for.

template <class T>
int parse_count(const T*& at, Arguments& arguments)
{
    if (*at == '*') {
        ++at;
        return va_arg(arguments.list, int);
    }
    int count = 0;
    for (; *at >= '0' && *at <= '9'; ++at)
        count = std::min(count * 10 + static_cast<int>(*at - '0'), 100000000);
    return count;
}

template <class T>
void parse_flags(const T*& at, Spec& spec)
{
    for (;; ++at) {
        switch (*at) {
        case '-':
            spec.left = true;
            break;
        case '+':
            spec.plus = true;
            break;
        case ' ':
            spec.blank = true;
            break;
        case '#':
            spec.alternate = true;
            break;
        case '0':
            spec.zero = true;
            break;
        default:
            return;
        }
    }
}

template <class T>
void parse_size(const T*& at, Spec& spec)
{
    using Size = Spec::Size;
    for (;; ++at) {
        switch (*at) {
        case 'h':
            spec.size = spec.size == Size::Short ? Size::Normal : Size::Short;
            break;
        case 'l':
            spec.size = spec.size == Size::Long ? Size::LongLong : Size::Long;
            break;
        case 'w':
            spec.size = Size::Wide;
            break;
        case 'L':
            break;
        case 'z':
        case 't':
        case 'I':
            spec.size = Size::Pointer;
            if (at[0] == 'I' && at[1] == '6' && at[2] == '4') {
                spec.size = Size::LongLong;
                at += 2;
            } else if (at[0] == 'I' && at[1] == '3' && at[2] == '2') {
                spec.size = Size::Long;
                at += 2;
            }
            break;
        default:
            return;
        }
    }
}

template <class T>
Spec parse_spec(const T*& at, Arguments& arguments)
{
    Spec spec;
    parse_flags(at, spec);
    spec.width = parse_count(at, arguments);
    if (spec.width < 0) {
        spec.left = true;
        spec.width = -spec.width;
    }
    if (*at == '.') {
        ++at;
        spec.precision = parse_count(at, arguments);
    }
    parse_size(at, spec);
    return spec;
}

// --- The conversions.

template <class T>
template <class C>
void Formatter<T>::text(const C* source, const Spec& spec)
{
    static const C null_text[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
    if (source == nullptr)
        source = null_text;
    // With a precision the text need not be terminated.
    size_t length = 0;
    while ((spec.precision < 0 || length < static_cast<size_t>(spec.precision)) &&
           source[length] != 0)
        ++length;
    const int padding = spec.width - static_cast<int>(std::min<size_t>(length, 0x7FFFFFFF));
    if (!spec.left)
        fill(padding, spec.zero ? '0' : ' ');
    for (size_t i = 0; i < length; ++i) {
        const auto unit =
            static_cast<std::make_unsigned_t<std::conditional_t<sizeof(C) == 1, char, short>>>(
                source[i]);
        // A byte and a unit of one value stand for each other; other units have no byte.
        if (sizeof(T) == 1 && unit > 0xFF)
            m_failed = true;
        put(static_cast<T>(unit));
    }
    if (spec.left)
        fill(padding, ' ');
}

template <class T>
void Formatter<T>::number(const std::string& sign, const std::string& digits, const Spec& spec)
{
    const int padding = spec.width - static_cast<int>(sign.size() + digits.size());
    const bool zeros = spec.zero && !spec.left;
    if (!spec.left && !zeros)
        fill(padding, ' ');
    for (const char c : sign)
        put(static_cast<T>(c));
    if (zeros)
        fill(padding, '0');
    for (const char c : digits)
        put(static_cast<T>(c));
    if (spec.left)
        fill(padding, ' ');
}

std::string sign_text(bool negative, const Spec& spec)
{
    return negative ? "-" : spec.plus ? "+" : spec.blank ? " " : "";
}

UINT64 read_integer(const Spec& spec, bool is_signed, Arguments& arguments)
{
    if (spec.size == Spec::Size::LongLong || spec.size == Spec::Size::Pointer)
        return va_arg(arguments.list, UINT64);
    const int value = va_arg(arguments.list, int);
    if (spec.size == Spec::Size::Short)
        return is_signed ? static_cast<UINT64>(static_cast<INT64>(static_cast<short>(value)))
                         : static_cast<unsigned short>(value);
    return is_signed ? static_cast<UINT64>(static_cast<INT64>(value))
                     : static_cast<unsigned>(value);
}

template <class T>
void Formatter<T>::integer(T conversion, const Spec& given, Arguments& arguments)
{
    Spec spec = given;
    const bool is_signed = conversion == 'd' || conversion == 'i';
    UINT64 value = read_integer(spec, is_signed, arguments);
    const bool negative = is_signed && static_cast<INT64>(value) < 0;
    if (negative)
        value = 0 - value;
    const unsigned base = conversion == 'x' || conversion == 'X' ? 16 : conversion == 'o' ? 8 : 10;
    const char* const figures = conversion == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    std::string digits;
    for (UINT64 rest = value; rest != 0; rest /= base)
        digits.insert(digits.begin(), figures[rest % base]);
    const auto least = static_cast<size_t>(std::max(spec.precision < 0 ? 1 : spec.precision, 0));
    if (digits.size() < least)
        digits.insert(0, least - digits.size(), '0');
    if (spec.precision >= 0)
        spec.zero = false;
    std::string sign = is_signed ? sign_text(negative, spec) : "";
    if (spec.alternate && value != 0) {
        if (base == 16)
            sign = conversion == 'X' ? "0X" : "0x";
        else if (base == 8 && digits[0] != '0')
            digits.insert(0, "0");
    }
    number(sign, digits, spec);
}

template <class T>
void Formatter<T>::floating(T conversion, const Spec& spec, Arguments& arguments)
{
    const double value = va_arg(arguments.list, double);
    number(sign_text(std::signbit(value), spec),
           zor::platform::float_text(value, static_cast<char>(conversion), spec.precision,
                                     spec.alternate),
           spec);
}

template <class T>
void Formatter<T>::character(bool wide, const Spec& given, Arguments& arguments)
{
    Spec spec = given;
    spec.precision = 1;
    const int value = va_arg(arguments.list, int);
    const unsigned unit = wide ? static_cast<WCHAR>(value) : static_cast<unsigned char>(value);
    // A unit without a byte leaves a narrow text as it is.
    const bool none = sizeof(T) == 1 && unit > 0xFF;
    if (!spec.left)
        fill(spec.width - 1, spec.zero ? '0' : ' ');
    if (!none)
        put(static_cast<T>(unit));
    if (spec.left)
        fill(spec.width - 1, ' ');
}

template <class T>
bool Formatter<T>::convert(T conversion, const Spec& spec, Arguments& arguments)
{
    using Size = Spec::Size;
    constexpr bool own_is_wide = sizeof(T) == 2;
    const bool is_wide = spec.size == Size::Long || spec.size == Size::Wide ? true
                         : spec.size == Size::Short                         ? false
                         : conversion == 's' || conversion == 'c'           ? own_is_wide
                                                                            : !own_is_wide;
    switch (conversion) {
    case 's':
    case 'S':
        if (is_wide)
            text(va_arg(arguments.list, const WCHAR*), spec);
        else
            text(va_arg(arguments.list, const char*), spec);
        return true;
    case 'c':
    case 'C':
        character(is_wide, spec, arguments);
        return true;
    case 'd':
    case 'i':
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        integer(conversion, spec, arguments);
        return true;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        floating(conversion, spec, arguments);
        return true;
    case 'p': {
        Spec address;
        address.size = Size::LongLong;
        address.precision = 16;
        address.width = spec.width;
        address.left = spec.left;
        integer('X', address, arguments);
        return true;
    }
    case 'n':
        static_cast<void>(va_arg(arguments.list, void*));
        return true;
    default:
        return false;
    }
}

template <class T>
int Formatter<T>::run(const T* format, Arguments& arguments)
{
    for (const T* at = format; *at != 0;) {
        if (*at != '%') {
            put(*at++);
            continue;
        }
        ++at;
        const Spec spec = parse_spec(at, arguments);
        if (*at == 0)
            break;
        // What is no conversion is text; "%" is only right behind the first one.
        if (*at == '%') {
            if (at[-1] == '%')
                put(*at);
        } else if (!convert(*at, spec, arguments)) {
            put(*at);
        }
        ++at;
    }
    if (m_failed) {
        if (m_size > 0)
            m_buffer[0] = 0;
        return -1;
    }
    if (m_count > m_size)
        return -1;
    if (m_count < m_size)
        m_buffer[m_count] = 0;
    return static_cast<int>(m_count);
}

template <class T>
int format_list(T* buffer, size_t size, const T* format, va_list list)
{
    Arguments arguments;
    va_copy(arguments.list, list);
    const int result = Formatter<T>(buffer, size).run(format, arguments);
    va_end(arguments.list);
    return result;
}

} // namespace

int _vsnprintf(char* buffer, size_t size, const char* format, va_list arguments)
{
    return format_list(buffer, size, format, arguments);
}

int _vsnwprintf(WCHAR* buffer, size_t size, const WCHAR* format, va_list arguments)
{
    return format_list(buffer, size, format, arguments);
}

int _snprintf(char* buffer, size_t size, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return result;
}

int _snwprintf(WCHAR* buffer, size_t size, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf(buffer, size, format, arguments);
    va_end(arguments);
    return result;
}
