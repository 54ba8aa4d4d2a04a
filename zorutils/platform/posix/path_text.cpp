#include "zorutils/platform/posix/path_text.h"

#include "zorutils/platform/posix/last_error.h"

#include <stdint.h>
#include <vector>

namespace zor::platform {

namespace {

constexpr char32_t raw_byte_base = 0xDC00;
constexpr char32_t mapped_base = 0xF000;

bool is_separator(WCHAR unit)
{
    return unit == '\\' || unit == '/';
}

bool is_high_surrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool is_low_surrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

// Characters that a Windows name can't hold, separators aside.
bool is_forbidden(char32_t point)
{
    return (point > 0 && point < 32) || point == '"' || point == '*' || point == ':' ||
           point == '<' || point == '>' || point == '?' || point == '|';
}

// A character that stands in text for one that no Windows name can hold.
bool is_mapped(char32_t point)
{
    const char32_t meant = point - mapped_base;
    return point > mapped_base && point < mapped_base + 0x80 &&
           (is_forbidden(meant) || meant == '\\' || meant == '.' || meant == ' ');
}

void append_utf8(std::string& out, char32_t point)
{
    const auto byte = [&out](char32_t value) { out += static_cast<char>(value); };
    const auto tail = [&](int shift) { byte(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        byte(point);
    } else if (point < 0x800) {
        byte(0xC0 | (point >> 6));
        tail(0);
    } else if (point < 0x10000) {
        byte(0xE0 | (point >> 12));
        tail(6);
        tail(0);
    } else {
        byte(0xF0 | (point >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

// The character at the start of `bytes` and its length; length 0 if it is no valid UTF-8: overlong
// forms, surrogates and values above U+10FFFF are not.
struct Decoded
{
    char32_t point;
    size_t length;
};

Decoded decode_utf8(std::string_view bytes)
{
    const auto at = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80)
        return {lead, 1};
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length)
        return {0, 0};
    char32_t point = lead & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80)
            return {0, 0};
        point = (point << 6) | (at(i) & 0x3Fu);
    }
    const char32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (point < least || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000))
        return {0, 0};
    return {point, length};
}

void append_utf16(Text& out, char32_t point)
{
    if (point < 0x10000) {
        out += static_cast<WCHAR>(point);
    } else {
        out += static_cast<WCHAR>(0xD800 + ((point - 0x10000) >> 10));
        out += static_cast<WCHAR>(0xDC00 + ((point - 0x10000) & 0x3FF));
    }
}

// Without "\\?\", "\\.\" and "\??\", and without a drive.
TextView without_prefix(TextView text)
{
    if (text.size() >= 4 && is_separator(text[0]) && is_separator(text[3]) &&
        (is_separator(text[1]) || text[1] == '?') && (text[2] == '?' || text[2] == '.'))
        text.remove_prefix(4);
    const auto letter = [](WCHAR unit) {
        return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
    };
    if (text.size() >= 2 && letter(text[0]) && text[1] == ':')
        text.remove_prefix(2);
    return text;
}

std::vector<TextView> split(TextView text)
{
    std::vector<TextView> names;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = begin;
        while (end < text.size() && !is_separator(text[end]))
            ++end;
        if (end > begin)
            names.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

// Dots and spaces at the end of a path don't count, nor does one dot at the end of a folder's name.
TextView without_idle_end(TextView name, bool last)
{
    if (last) {
        while (!name.empty() && (name.back() == '.' || name.back() == ' '))
            name.remove_suffix(1);
    } else if (name.size() > 1 && name.back() == '.') {
        name.remove_suffix(1);
    }
    return name;
}

// Resolves "." and "..": above the root there is nothing, above the current folder there is.
std::vector<TextView> resolve(const std::vector<TextView>& names, bool absolute)
{
    static constexpr WCHAR up[] = {'.', '.', 0};
    std::vector<TextView> resolved;
    for (const TextView& name : names) {
        if (name == TextView(up, 1))
            continue;
        if (name == up) {
            if (!resolved.empty() && resolved.back() != up)
                resolved.pop_back();
            else if (!absolute)
                resolved.push_back(name);
            continue;
        }
        const TextView kept = without_idle_end(name, &name == &names.back());
        if (!kept.empty())
            resolved.push_back(kept);
    }
    return resolved;
}

} // namespace

std::string to_system_name(TextView name)
{
    std::string out;
    for (size_t i = 0; i < name.size(); ++i) {
        const char32_t unit = name[i];
        if (is_high_surrogate(unit) && i + 1 < name.size() && is_low_surrogate(name[i + 1])) {
            ++i;
            append_utf8(out, 0x10000 + ((unit - 0xD800) << 10) + (name[i] - 0xDC00u));
        } else if (unit >= raw_byte_base + 0x80 && unit <= raw_byte_base + 0xFF) {
            out += static_cast<char>(unit - raw_byte_base);
        } else {
            append_utf8(out, is_mapped(unit) ? unit - mapped_base : unit);
        }
    }
    return out;
}

Text from_system_name(std::string_view name)
{
    Text out;
    const bool is_dots = name == "." || name == "..";
    for (size_t i = 0; i < name.size();) {
        const Decoded decoded = decode_utf8(name.substr(i));
        const size_t length = decoded.length ? decoded.length : 1;
        if (decoded.length == 0 || is_mapped(decoded.point)) {
            for (size_t end = i + length; i < end; ++i)
                out += static_cast<WCHAR>(raw_byte_base + static_cast<unsigned char>(name[i]));
            continue;
        }
        i += length;
        const bool idle =
            i == name.size() && !is_dots && (decoded.point == '.' || decoded.point == ' ');
        if (idle || decoded.point == '\\' || is_forbidden(decoded.point))
            out += static_cast<WCHAR>(mapped_base + decoded.point);
        else
            append_utf16(out, decoded.point);
    }
    return out;
}

Text from_system_path(std::string_view path)
{
    Text out;
    while (!path.empty()) {
        const size_t end = path.find('/');
        out += from_system_name(path.substr(0, end));
        if (end == std::string_view::npos)
            break;
        out += static_cast<WCHAR>('\\');
        path.remove_prefix(end + 1);
    }
    return out;
}

DWORD to_system_path(TextView text, SystemPath& path)
{
    if (text.empty())
        return ERROR_PATH_NOT_FOUND;
    text = without_prefix(text);
    const bool absolute = !text.empty() && is_separator(text.front());
    path.ends_in_separator = !text.empty() && is_separator(text.back());
    path.path = absolute ? "/" : "";
    for (const TextView& name : resolve(split(text), absolute)) {
        for (const WCHAR unit : name) {
            if (is_forbidden(unit))
                return ERROR_INVALID_NAME;
        }
        const std::string system_name = to_system_name(name);
        // Mapped dots must not climb where the text didn't say so.
        if (name.front() != '.' && (system_name == "." || system_name == ".."))
            return ERROR_INVALID_NAME;
        if (!path.path.empty() && path.path.back() != '/')
            path.path += '/';
        path.path += system_name;
    }
    if (path.path.empty())
        path.path = ".";
    return ERROR_SUCCESS;
}

DWORD to_system_path(LPCWSTR text, SystemPath& path)
{
    return to_system_path(text ? TextView(text) : TextView(), path);
}

std::string parent_of(const std::string& path)
{
    const size_t last = path.rfind('/');
    if (last == std::string::npos)
        return ".";
    return last == 0 ? "/" : path.substr(0, last);
}

} // namespace zor::platform
