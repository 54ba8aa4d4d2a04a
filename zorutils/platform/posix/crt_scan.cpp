#include "zorutils/platform/posix/crt_scan.h"

#include <stdarg.h>

#include <algorithm>
#include <limits>
#include <string>

#include "zorutils/platform/posix/crt_ctype.h"
#include "zorutils/platform/posix/crt_number.h"

namespace {

struct Field
{
    bool store = true;
    int width = std::numeric_limits<int>::max();
    enum class Size
    {
        Normal,
        Short,
        Long,
        LongLong
    } size = Size::Normal;
};

struct Arguments
{
    va_list list;
};

class Scanner
{
public:
    explicit Scanner(const WCHAR* text) : m_start(text), m_at(text) {}

    int run(const WCHAR* format, Arguments& arguments);

private:
    void skip_space()
    {
        while (iswspace(*m_at))
            ++m_at;
    }
    bool whole(WCHAR conversion, const Field& field, Arguments& arguments);
    bool real(const Field& field, Arguments& arguments);
    template <class Accept>
    bool characters(const Field& field, Arguments& arguments, bool terminate, Accept accept);
    bool convert(const WCHAR*& format, const Field& field, Arguments& arguments);

    const WCHAR* m_start;
    const WCHAR* m_at;
    int m_stored = 0;
};

Field parse_field(const WCHAR*& at)
{
    Field field;
    if (*at == '*') {
        field.store = false;
        ++at;
    }
    if (*at >= '1' && *at <= '9') {
        field.width = 0;
        for (; *at >= '0' && *at <= '9'; ++at)
            field.width = std::min(field.width * 10 + (*at - '0'), 100000000);
    }
    for (;; ++at) {
        if (*at == 'h') {
            field.size = Field::Size::Short;
        } else if (*at == 'l') {
            field.size =
                field.size == Field::Size::Long ? Field::Size::LongLong : Field::Size::Long;
        } else if (at[0] == 'I' && at[1] == '6' && at[2] == '4') {
            field.size = Field::Size::LongLong;
            at += 2;
        } else if (at[0] == 'I' && at[1] == '3' && at[2] == '2') {
            field.size = Field::Size::Long;
            at += 2;
        } else if (*at != 'L') {
            return field;
        }
    }
}

int figure(WCHAR unit, unsigned base)
{
    int value = -1;
    if (unit >= '0' && unit <= '9')
        value = unit - '0';
    else if ((unit | 0x20) >= 'a' && (unit | 0x20) <= 'f')
        value = (unit | 0x20) - 'a' + 10;
    return value < static_cast<int>(base) ? value : -1;
}

unsigned base_of(WCHAR conversion, const WCHAR* at)
{
    if (conversion == 'x' || conversion == 'X')
        return 16;
    if (conversion == 'o')
        return 8;
    if (conversion == 'i' && at[0] == '0')
        return (at[1] | 0x20) == 'x' ? 16 : 8;
    return 10;
}

// The magnitude with its sign, held to the range of the wider of its size and 32 bits.
UINT64 held(UINT64 magnitude, bool negative, bool is_unsigned, bool is_64_bit)
{
    UINT64 most = 0;
    if (is_unsigned)
        most = is_64_bit ? ~UINT64{0} : 0xFFFFFFFFu;
    else
        most = (is_64_bit ? UINT64{1} << 63 : UINT64{1} << 31) - (negative ? 0 : 1);
    magnitude = std::min(magnitude, most);
    return negative ? 0 - magnitude : magnitude;
}

bool Scanner::whole(WCHAR conversion, const Field& field, Arguments& arguments)
{
    skip_space();
    const WCHAR* at = m_at;
    int left = field.width;
    const bool negative = *at == '-';
    if ((*at == '-' || *at == '+') && left > 0) {
        ++at;
        --left;
    }
    const unsigned base = base_of(conversion, at);
    if (base == 16 && at[0] == '0' && (at[1] | 0x20) == 'x' && left >= 3 &&
        figure(at[2], 16) >= 0) {
        at += 2;
        left -= 2;
    }
    const WCHAR* const digits = at;
    UINT64 magnitude = 0;
    for (int value; left > 0 && (value = figure(*at, base)) >= 0; ++at, --left) {
        const bool over = magnitude > (~UINT64{0} - static_cast<unsigned>(value)) / base;
        magnitude = over ? ~UINT64{0} : magnitude * base + static_cast<unsigned>(value);
    }
    if (at == digits)
        return false;
    m_at = at;
    if (!field.store)
        return true;
    const bool is_64_bit = field.size == Field::Size::LongLong;
    const bool is_unsigned = conversion != 'd' && conversion != 'i';
    const UINT64 value = held(magnitude, negative, is_unsigned, is_64_bit);
    if (is_64_bit)
        *va_arg(arguments.list, INT64*) = static_cast<INT64>(value);
    else if (field.size == Field::Size::Short)
        *va_arg(arguments.list, short*) = static_cast<short>(value);
    else
        *va_arg(arguments.list, int*) = static_cast<int>(value);
    ++m_stored;
    return true;
}

bool Scanner::real(const Field& field, Arguments& arguments)
{
    skip_space();
    const WCHAR* text = m_at;
    std::u16string cut;
    if (field.width != std::numeric_limits<int>::max()) {
        while (cut.size() < static_cast<size_t>(field.width) && m_at[cut.size()] != 0)
            cut += m_at[cut.size()];
        text = cut.c_str();
    }
    WCHAR* end = nullptr;
    const double value = wcstod(text, &end);
    if (end == text)
        return false;
    // A prefix of a longer spelling is no number here: "0x" without digits, "infin".
    const auto next = static_cast<WCHAR>(*end | 0x20);
    const auto last = static_cast<WCHAR>(end[-1] | 0x20);
    const bool lone_prefix =
        next == 'x' && end[-1] == '0' &&
        (end - text == 1 || (end - text == 2 && (*text == '-' || *text == '+')));
    if (lone_prefix || (last == 'f' && next == 'i'))
        return false;
    m_at += end - text;
    if (!field.store)
        return true;
    if (field.size == Field::Size::Long)
        *va_arg(arguments.list, double*) = value;
    else
        *va_arg(arguments.list, float*) = static_cast<float>(value);
    ++m_stored;
    return true;
}

template <class Accept>
bool Scanner::characters(const Field& field, Arguments& arguments, bool terminate, Accept accept)
{
    WCHAR* out = field.store ? va_arg(arguments.list, WCHAR*) : nullptr;
    int count = 0;
    for (; count < field.width && *m_at != 0 && accept(*m_at); ++count, ++m_at) {
        if (out != nullptr)
            *out++ = *m_at;
    }
    if (count == 0)
        return false;
    if (out != nullptr) {
        if (terminate)
            *out = 0;
        ++m_stored;
    }
    return true;
}

// Whether a unit is in the set behind "[", with ranges and "^"; the format moves to its "]".
struct Set
{
    const WCHAR* first;
    const WCHAR* last;
    bool inverted;

    bool holds(WCHAR unit) const
    {
        for (const WCHAR* at = first; at != last; ++at) {
            if (last - at > 2 && at[1] == '-') {
                if (unit >= at[0] && unit <= at[2])
                    return !inverted;
                at += 2;
            } else if (*at == unit) {
                return !inverted;
            }
        }
        return inverted;
    }
};

Set parse_set(const WCHAR*& format)
{
    Set set{};
    ++format;
    set.inverted = *format == '^';
    if (set.inverted)
        ++format;
    set.first = format;
    if (*format == ']')
        ++format;
    while (*format != 0 && *format != ']')
        ++format;
    set.last = format;
    return set;
}

bool Scanner::convert(const WCHAR*& format, const Field& field, Arguments& arguments)
{
    switch (*format) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        return whole(*format, field, arguments);
    case 'f':
    case 'e':
    case 'g':
    case 'E':
    case 'G':
        return real(field, arguments);
    case 's':
        skip_space();
        return characters(field, arguments, true, [](WCHAR unit) { return !iswspace(unit); });
    case 'c': {
        Field one = field;
        if (one.width == std::numeric_limits<int>::max())
            one.width = 1;
        return characters(one, arguments, false, [](WCHAR) { return true; });
    }
    case '[': {
        const Set set = parse_set(format);
        return *format == ']' &&
               characters(field, arguments, true, [&set](WCHAR unit) { return set.holds(unit); });
    }
    case 'n':
        if (field.store)
            *va_arg(arguments.list, int*) = static_cast<int>(m_at - m_start);
        return true;
    case '%':
        if (*m_at != '%')
            return false;
        ++m_at;
        return true;
    default:
        return false;
    }
}

int Scanner::run(const WCHAR* format, Arguments& arguments)
{
    for (; *format != 0; ++format) {
        if (iswspace(*format)) {
            skip_space();
            continue;
        }
        bool matched = false;
        if (*format == '%') {
            ++format;
            const Field field = parse_field(format);
            const bool counts = *format == 'n';
            const WCHAR* const before = m_at;
            if (!counts && *format != 'c' && *format != '[')
                skip_space();
            if (!counts && *m_at == 0)
                return m_stored == 0 ? -1 : m_stored;
            if (*format == '%')
                m_at = before;
            matched = convert(format, field, arguments);
        } else {
            matched = *m_at == *format;
            m_at += matched ? 1 : 0;
        }
        if (!matched)
            break;
    }
    return m_stored;
}

} // namespace

int swscanf(const WCHAR* text, const WCHAR* format, ...)
{
    Arguments arguments;
    va_start(arguments.list, format);
    const int stored = Scanner(text).run(format, arguments);
    va_end(arguments.list);
    return stored;
}
