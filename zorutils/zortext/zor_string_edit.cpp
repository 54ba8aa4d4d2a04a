// Editing and trimming of the string. Every writer unshares the block first.
#include <algorithm>
#include <functional>

#include "zorutils/zortext/zor_string.h"
#include "zorutils/zortext/zor_string_traits_internal.h"

namespace zor_text {

namespace {

template <class T>
void move_text(T* to, const T* from, size_t count)
{
    // A null text has no characters to move.
    if (count != 0)
        memmove(to, from, count * sizeof(T));
}

} // namespace

// Whether `text` lies in this string's own block, which an edit may move or free.
template <class T>
bool CZorStringT<T>::OwnsText(const T* text) const
{
    const std::less<const T*> before;
    return text != nullptr && !before(text, m_pChars) && !before(m_pChars + GetAllocLength(), text);
}

// --- Insert, delete, remove, replace.

// Unshares, grows to exactly what is needed and moves the tail up by `count`; the caller fills the
// gap. `index` lies within the text.
template <class T>
void CZorStringT<T>::OpenGap(int index, int count)
{
    const int length = GetLength();
    if (length + count > GetAllocLength())
        GrowCopy(length + count);
    move_text(m_pChars + index + count, m_pChars + index, static_cast<size_t>(length - index) + 1);
    GetData()->nDataLength = length + count;
}

template <class T>
int CZorStringT<T>::Insert(int index, T c)
{
    CopyBeforeWrite();
    index = std::clamp(index, 0, GetLength());
    OpenGap(index, 1);
    m_pChars[index] = c;
    return GetLength();
}

template <class T>
int CZorStringT<T>::Insert(int index, const T* text)
{
    const int count = SafeStrlen(text);
    if (count < 1)
        return GetLength();
    if (OwnsText(text)) {
        CZorStringT copy;
        copy.AssignCopy(count, text);
        return Insert(index, copy.m_pChars);
    }
    CopyBeforeWrite();
    index = std::clamp(index, 0, GetLength());
    OpenGap(index, count);
    move_text(m_pChars + index, text, static_cast<size_t>(count));
    return GetLength();
}

template <class T>
int CZorStringT<T>::Delete(int index, int count)
{
    const int length = GetLength();
    index = std::max(index, 0);
    count = std::min(count, length);
    if (count >= 1 && index < length) {
        CopyBeforeWrite();
        // A range that reaches past the end is the caller's fault; it ends at the text's end.
        count = std::min(count, length - index);
        move_text(m_pChars + index, m_pChars + index + count,
                  static_cast<size_t>(length - index - count) + 1);
        GetData()->nDataLength = length - count;
    }
    // The length from before, on purpose: callers count with it.
    return length;
}

template <class T>
int CZorStringT<T>::Remove(T c)
{
    CopyBeforeWrite();
    T* const end = m_pChars + GetLength();
    T* const kept = std::remove(m_pChars, end, c);
    SetLength(static_cast<int>(kept - m_pChars));
    return static_cast<int>(end - kept);
}

template <class T>
int CZorStringT<T>::Replace(T old, T replacement)
{
    if (old == replacement)
        return 0;
    CopyBeforeWrite();
    T* const end = m_pChars + GetLength();
    const auto hits = std::count(m_pChars, end, old);
    std::replace(m_pChars, end, old, replacement);
    return static_cast<int>(hits);
}

namespace {

// Calls `visit` with each hit of `old` in the text from `begin` to `end`, stepping over the zero
// characters inside it; what stands behind a hit is looked at after the visit.
template <class T, class Visit>
void for_each_hit(const T* begin, const T* end, const T* old, int old_length, Visit visit)
{
    while (begin < end) {
        while (const T* hit = TextCalls<T>::find(begin, old)) {
            begin = hit + old_length;
            visit(hit);
        }
        begin += TextCalls<T>::length(begin) + 1;
    }
}

} // namespace

template <class T>
int CZorStringT<T>::Replace(const T* old, const T* replacement)
{
    const int old_length = SafeStrlen(old);
    if (old_length == 0)
        return 0;
    if (OwnsText(old) || OwnsText(replacement)) {
        CZorStringT old_copy, replacement_copy;
        old_copy.AssignCopy(old_length, old);
        replacement_copy.AssignCopy(SafeStrlen(replacement), replacement);
        return Replace(old_copy.m_pChars, replacement_copy.m_pChars);
    }
    const int length = GetLength();
    const int new_length = SafeStrlen(replacement);
    int hits = 0;
    for_each_hit(m_pChars, m_pChars + length, old, old_length, [&](const T*) { ++hits; });
    if (hits == 0)
        return 0;

    CopyBeforeWrite();
    const int result_length = length + (new_length - old_length) * hits;
    if (result_length > GetAllocLength())
        GrowCopy(result_length);
    // The text is read from the buffer's end and written from its front, so each character moves
    // once; what is written never overtakes what is still to be read.
    T* const source = m_pChars + std::max(result_length - length, 0);
    if (source != m_pChars)
        move_text(source, m_pChars, static_cast<size_t>(length) + 1);
    const T* read = source;
    T* write = m_pChars;
    for_each_hit<T>(source, source + length, old, old_length, [&](const T* hit) {
        move_text(write, read, static_cast<size_t>(hit - read));
        write += hit - read;
        move_text(write, replacement, static_cast<size_t>(new_length));
        write += new_length;
        read = hit + old_length;
    });
    move_text(write, read, static_cast<size_t>(source + length - read));
    SetLength(result_length);
    return hits;
}

template <class T>
void CZorStringT<T>::push_back(T c)
{
    Insert(GetLength(), c);
}

template <class T>
CZorStringT<T>& CZorStringT<T>::MakeUpper()
{
    CopyBeforeWrite();
    TextCalls<T>::upper(m_pChars);
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::MakeLower()
{
    CopyBeforeWrite();
    TextCalls<T>::lower(m_pChars);
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::MakeReverse()
{
    CopyBeforeWrite();
    TextCalls<T>::reverse(m_pChars);
    return *this;
}

// --- Trim.

namespace {

// The terminator is in no set, so a walk always ends there.
template <class T>
auto is_one_of(const T* set)
{
    return [set](T c) { return c != 0 && set != nullptr && TextCalls<T>::find(set, c) != nullptr; };
}

template <class T>
auto is_character(T trimmed)
{
    return [trimmed](T c) { return c != 0 && c == trimmed; };
}

template <class T, class Trimmed>
int leading_run(const T* text, Trimmed trimmed)
{
    const T* kept = text;
    while (trimmed(*kept))
        ++kept;
    return static_cast<int>(kept - text);
}

// Where the run of trimmed characters begins that ends the terminated text; -1 without one.
template <class T, class Trimmed>
int trailing_run(const T* text, Trimmed trimmed)
{
    const T* run = nullptr;
    const T* at = text;
    for (; *at != 0; ++at) {
        if (!trimmed(*at))
            run = nullptr;
        else if (run == nullptr)
            run = at;
    }
    return run == nullptr ? -1 : static_cast<int>(run - text);
}

} // namespace

// Moves the text down over its first `n` characters.
template <class T>
void CZorStringT<T>::DropLeft(int n)
{
    if (n == 0)
        return;
    const int rest = GetLength() - n;
    move_text(m_pChars, m_pChars + n, static_cast<size_t>(rest) + 1);
    GetData()->nDataLength = rest;
}

template <class T>
void CZorStringT<T>::TerminateAt(int n)
{
    if (n >= 0)
        SetLength(n);
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimLeft()
{
    CopyBeforeWrite();
    DropLeft(leading_run(m_pChars, &TextCalls<T>::is_space));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimLeft(T c)
{
    CopyBeforeWrite();
    DropLeft(leading_run(m_pChars, is_character(c)));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimLeft(const T* set)
{
    // The one form that does not unshare: with an empty set.
    if (SafeStrlen(set) == 0)
        return *this;
    CopyBeforeWrite();
    DropLeft(leading_run(m_pChars, is_one_of(set)));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimRight()
{
    CopyBeforeWrite();
    TerminateAt(trailing_run(m_pChars, &TextCalls<T>::is_space));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimRight(T c)
{
    CopyBeforeWrite();
    TerminateAt(trailing_run(m_pChars, is_character(c)));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::TrimRight(const T* set)
{
    CopyBeforeWrite();
    TerminateAt(trailing_run(m_pChars, is_one_of(set)));
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::Trim()
{
    TrimRight();
    return TrimLeft();
}

template <class T>
CZorStringT<T>& CZorStringT<T>::Trim(T c)
{
    TrimRight(c);
    return TrimLeft(c);
}

template <class T>
CZorStringT<T>& CZorStringT<T>::Trim(const T* set)
{
    TrimRight(set);
    return TrimLeft(set);
}

template class CZorStringT<char>;
template class CZorStringT<WCHAR>;

} // namespace zor_text
