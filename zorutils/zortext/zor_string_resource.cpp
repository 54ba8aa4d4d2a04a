// Resource strings and system strings of the string.
#include <algorithm>

#include "zorutils/core/bad_allocation.h"
#include "zorutils/zortext/resource_modules_internal.h"
#include "zorutils/zortext/zor_string.h"
#include "zorutils/zortext/zor_string_traits_internal.h"

namespace zor_text {

// --- Resource strings.

namespace {

// Copies an entry into `buffer` of `size` characters: what does not fit is cut in the wide form and
// fails in the narrow one, on purpose.
unsigned int copy_entry(const WCHAR* text, unsigned int length, WCHAR* buffer, unsigned int size)
{
    const unsigned int copied = std::min(length, size - 1);
    std::copy_n(text, copied, buffer);
    return copied;
}

unsigned int copy_entry(const WCHAR* text, unsigned int length, char* buffer, unsigned int size)
{
    const int room = static_cast<int>(size - 1);
    if (room == 0)
        return 0;
    return static_cast<unsigned int>(convert(text, static_cast<int>(length), buffer, room));
}

template <class T>
int load_string(unsigned int id, T* buffer, unsigned int size)
{
    if (buffer == nullptr || size == 0)
        return 0;
    const StringEntry entry = find_string_entry(id);
    const unsigned int copied =
        entry.length == 0 ? 0 : copy_entry(entry.text, entry.length, buffer, size);
    buffer[copied] = 0;
    return static_cast<int>(copied);
}

} // namespace

int AfxLoadString(unsigned int id, char* buffer, unsigned int size)
{
    return load_string(id, buffer, size);
}

int AfxLoadString(unsigned int id, WCHAR* buffer, unsigned int size)
{
    return load_string(id, buffer, size);
}

template <class T>
int CZorStringT<T>::LoadStringW(unsigned int id)
{
    if constexpr (std::is_same_v<T, char>) {
        CZorStringT<WCHAR> loaded;
        const int found = loaded.LoadStringW(id);
        *this = loaded.c_str();
        // The opposite of the wide form, on purpose: callers of the narrow one test it this way.
        return found == 0 ? 1 : 0;
    } else {
        constexpr int step = 256;
        WCHAR local[step];
        int length = AfxLoadString(id, local, step);
        if (step - length > 1) {
            *this = local;
            return length > 0 ? 1 : 0;
        }
        // The text may have been cut: the buffer grows until one character of it stays free.
        int size = step;
        do {
            size += step;
            length = AfxLoadString(id, GetBuffer(size - 1), static_cast<unsigned int>(size));
        } while (size - length < 2);
        ReleaseBuffer(-1);
        return length > 0 ? 1 : 0;
    }
}

// --- System strings.

template <class T>
WCHAR* CZorStringT<T>::AllocSysString() const
{
    WCHAR* text = nullptr;
    SetSysString(&text);
    return text;
}

template <class T>
WCHAR* CZorStringT<T>::SetSysString(WCHAR** target) const
{
    const int length = GetLength();
    if constexpr (std::is_same_v<T, WCHAR>) {
        if (!SysReAllocStringLen(target, m_pChars, static_cast<UINT>(length)))
            throw ZorBadAllocation();
    } else {
        const int units =
            length == 0 ? 0 : convert(m_pChars, length, static_cast<WCHAR*>(nullptr), 0);
        if (!SysReAllocStringLen(target, nullptr, static_cast<UINT>(units)))
            throw ZorBadAllocation();
        convert(m_pChars, length, *target, units);
    }
    return *target;
}

template class CZorStringT<char>;
template class CZorStringT<WCHAR>;

} // namespace zor_text
