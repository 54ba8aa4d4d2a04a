#include "zorutils/platform/posix/codepage.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <atomic>

#include "zorutils/platform/posix/code_page_table.h"
#include "zorutils/platform/posix/crt_text.h"
#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/utf8.h"

using zor::platform::code_page_table;
using zor::platform::CodePageTable;

// --- The active page.

namespace zor {
namespace platform {

namespace {

constexpr UINT default_page = 1252;

bool is_known(UINT page)
{
    return page == CP_UTF8 || code_page_table(page) != nullptr;
}

std::atomic<UINT>& active_page()
{
    static std::atomic<UINT> page{[] {
        const char* const named = getenv("ZOR_ACP");
        const UINT asked = named == nullptr ? 0 : static_cast<UINT>(strtoul(named, nullptr, 10));
        return asked != 0 && is_known(asked) ? asked : default_page;
    }()};
    return page;
}

} // namespace

bool set_active_code_page(UINT page)
{
    if (page == CP_ACP || !is_known(page))
        return false;
    active_page().store(page);
    return true;
}

UINT active_code_page()
{
    return active_page().load();
}

} // namespace platform
} // namespace zor

UINT GetACP()
{
    return zor::platform::active_code_page();
}

BOOL IsValidCodePage(UINT page)
{
    return page != CP_ACP && zor::platform::is_known(page);
}

BOOL IsDBCSLeadByteEx(UINT page, BYTE byte)
{
    const auto* const table = code_page_table(page == CP_ACP ? GetACP() : page);
    return table != nullptr && table->is_lead[byte];
}

// --- Conversion.

namespace {

int fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

// Writes through a bounded buffer, or only counts where there is none.
template <class T>
class Output
{
public:
    Output(T* out, int size) : m_out(size == 0 ? nullptr : out), m_size(size) {}

    // False if there is no room for them.
    bool put(const T* characters, int count)
    {
        if (m_out != nullptr) {
            if (count > m_size - m_count)
                return false;
            std::copy_n(characters, count, m_out + m_count);
        }
        m_count += count;
        return true;
    }
    bool put(T character) { return put(&character, 1); }
    int count() const { return m_count; }

private:
    T* m_out;
    int m_size;
    int m_count = 0;
};

int to_wide(const CodePageTable& table, bool strict, const char* source, int length,
            Output<WCHAR> out)
{
    for (int i = 0; i < length; ++i) {
        const unsigned byte = static_cast<unsigned char>(source[i]);
        WCHAR unit = table.unit_of_byte[byte];
        if (table.is_lead[byte]) {
            // A lead byte without its trail byte is no character, and neither is it in front of a
            // terminator, which is kept.
            unit = table.default_unit;
            if (i + 1 < length && source[i + 1] != 0) {
                ++i;
                unit = table.unit_of_pair[byte * 256 + static_cast<unsigned char>(source[i])];
            }
            if (strict && unit == table.default_unit)
                return fail(ERROR_NO_UNICODE_TRANSLATION);
        }
        if (!out.put(unit))
            return fail(ERROR_INSUFFICIENT_BUFFER);
    }
    return out.count();
}

struct Substitute
{
    const char* text; // null: the page's own "?"
    bool only_exact;
    BOOL* used;
};

int to_bytes(const CodePageTable& table, const Substitute& substitute, const WCHAR* source,
             int length, Output<char> out)
{
    for (int i = 0; i < length; ++i) {
        const unsigned unit = source[i];
        const unsigned bytes = table.bytes_of_unit[unit];
        const bool missing =
            (bytes == '?' && unit != '?') || (substitute.only_exact && !table.exact[unit]);
        char pair[2] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)};
        const char* text = pair[0] != 0 ? pair : pair + 1;
        int count = pair[0] != 0 ? 2 : 1;
        if (missing) {
            if (substitute.used != nullptr)
                *substitute.used = TRUE;
            text = substitute.text != nullptr ? substitute.text : "?";
            count = table.double_byte && table.is_lead[static_cast<unsigned char>(text[0])] ? 2 : 1;
            // A surrogate pair is one character and gives one substitute for each half.
        }
        if (!out.put(text, count))
            return fail(ERROR_INSUFFICIENT_BUFFER);
    }
    return out.count();
}

bool is_bad_call(const void* source, int length, const void* out, int size)
{
    return source == nullptr || length == 0 || size < 0 || (size > 0 && out == nullptr) ||
           (size > 0 && out == source);
}

} // namespace

int MultiByteToWideChar(UINT page, DWORD flags, const char* source, int length, WCHAR* out,
                        int size)
{
    if (is_bad_call(source, length, out, size))
        return fail(ERROR_INVALID_PARAMETER);
    if (length < 0)
        length = static_cast<int>(strlen(source)) + 1;
    page = page == CP_ACP ? GetACP() : page;
    const bool strict = (flags & MB_ERR_INVALID_CHARS) != 0;
    if (page == CP_UTF8) {
        const int count = zor::platform::utf8_to_wide(source, length, out, size, strict);
        return count >= 0
                   ? count
                   : fail(count == zor::platform::utf8_no_room ? ERROR_INSUFFICIENT_BUFFER
                                                               : ERROR_NO_UNICODE_TRANSLATION);
    }
    const auto* const table = code_page_table(page);
    if (table == nullptr)
        return fail(ERROR_INVALID_PARAMETER);
    return to_wide(*table, strict, source, length, Output<WCHAR>(out, size));
}

int WideCharToMultiByte(UINT page, DWORD flags, const WCHAR* source, int length, char* out,
                        int size, const char* default_char, BOOL* used_default)
{
    if (is_bad_call(source, length, out, size))
        return fail(ERROR_INVALID_PARAMETER);
    if (length < 0)
        length = lstrlenW(source) + 1;
    page = page == CP_ACP ? GetACP() : page;
    if (page == CP_UTF8) {
        if (default_char != nullptr || used_default != nullptr)
            return fail(ERROR_INVALID_PARAMETER);
        const bool strict = (flags & WC_ERR_INVALID_CHARS) != 0;
        const int count = zor::platform::wide_to_utf8(source, length, out, size, strict);
        return count >= 0
                   ? count
                   : fail(count == zor::platform::utf8_no_room ? ERROR_INSUFFICIENT_BUFFER
                                                               : ERROR_NO_UNICODE_TRANSLATION);
    }
    const auto* const table = code_page_table(page);
    if (table == nullptr)
        return fail(ERROR_INVALID_PARAMETER);
    if (used_default != nullptr)
        *used_default = FALSE;
    const Substitute substitute{default_char, (flags & WC_NO_BEST_FIT_CHARS) != 0, used_default};
    return to_bytes(*table, substitute, source, length, Output<char>(out, size));
}

int lstrlenA(const char* text)
{
    return text == nullptr ? 0 : static_cast<int>(strlen(text));
}

int lstrlenW(const WCHAR* text)
{
    return text == nullptr ? 0 : static_cast<int>(wcslen(text));
}
