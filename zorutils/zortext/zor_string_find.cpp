// Substrings, search, comparison and tokens of the string.
#include <algorithm>

#include "zorutils/zortext/zor_string.h"
#include "zorutils/zortext/zor_string_traits_internal.h"

namespace zor_text {

// --- Substrings.

template <class T>
CZorStringT<T> CZorStringT<T>::Left(int n) const
{
    n = std::max(n, 0);
    if (n >= GetLength())
        return *this;
    CZorStringT part;
    AllocCopy(part, n, 0, 0);
    return part;
}

template <class T>
CZorStringT<T> CZorStringT<T>::Right(int n) const
{
    n = std::max(n, 0);
    if (n >= GetLength())
        return *this;
    CZorStringT part;
    AllocCopy(part, n, GetLength() - n, 0);
    return part;
}

template <class T>
CZorStringT<T> CZorStringT<T>::Mid(int first) const
{
    // 64-bit, as a far negative start would overflow.
    const INT64 count = static_cast<INT64>(GetLength()) - first;
    return Mid(first, static_cast<int>(std::min<INT64>(count, GetLength())));
}

template <class T>
CZorStringT<T> CZorStringT<T>::Mid(int first, int count) const
{
    const int length = GetLength();
    first = std::max(first, 0);
    count = std::max(count, 0);
    if (first > length)
        count = 0;
    else
        count = std::min(count, length - first);
    if (first == 0 && count == length)
        return *this;
    CZorStringT part;
    AllocCopy(part, count, first, 0);
    return part;
}

template <class T>
CZorStringT<T> CZorStringT<T>::SpanIncluding(const T* set) const
{
    return Left(static_cast<int>(TextCalls<T>::span(m_pChars, set)));
}

template <class T>
CZorStringT<T> CZorStringT<T>::SpanExcluding(const T* set) const
{
    return Left(static_cast<int>(TextCalls<T>::span_not(m_pChars, set)));
}

// --- Search.

namespace {

template <class T>
int index_of(const T* found, const T* text)
{
    return found == nullptr ? -1 : static_cast<int>(found - text);
}

} // namespace

template <class T>
int CZorStringT<T>::Find(T c) const
{
    return Find(c, 0);
}

template <class T>
int CZorStringT<T>::Find(const T* sub) const
{
    return Find(sub, 0);
}

template <class T>
int CZorStringT<T>::Find(T c, int start) const
{
    if (start >= GetLength())
        return -1;
    return index_of<T>(TextCalls<T>::find(m_pChars + start, c), m_pChars);
}

template <class T>
int CZorStringT<T>::Find(const T* sub, int start) const
{
    // A start at the length is searched, unlike for a character, on purpose: the empty text is
    // found there.
    if (start > GetLength())
        return -1;
    return index_of<T>(TextCalls<T>::find(m_pChars + start, sub), m_pChars);
}

template <class T>
int CZorStringT<T>::FindOneOf(const T* set) const
{
    return index_of<T>(TextCalls<T>::find_any(m_pChars, set), m_pChars);
}

template <class T>
int CZorStringT<T>::ReverseFind(T c) const
{
    return index_of<T>(TextCalls<T>::find_last(m_pChars, c), m_pChars);
}

// --- Comparison.

template <class T>
int CZorStringT<T>::Compare(const T* text) const
{
    const int order = TextCalls<T>::compare(m_pChars, text);
    return (order > 0) - (order < 0);
}

template <class T>
int CZorStringT<T>::CompareNoCase(const T* text) const
{
    return TextCalls<T>::compare_no_case(m_pChars, text);
}

template <class T>
int CZorStringT<T>::Collate(const T* text) const
{
    return TextCalls<T>::collate(m_pChars, text);
}

template <class T>
int CZorStringT<T>::CollateNoCase(const T* text) const
{
    return TextCalls<T>::collate_no_case(m_pChars, text);
}

// --- Tokens.

template <class T>
CZorStringT<T> CZorStringT<T>::Tokenize(const T* delimiters, int& position) const
{
    if (position < 0)
        return CZorStringT();
    const int length = GetLength();
    if (position < length) {
        // Without delimiters the position stays, on purpose: a caller's loop must look at it.
        if (SafeStrlen(delimiters) == 0)
            return Right(length - position);
        const int first =
            position + static_cast<int>(TextCalls<T>::span(m_pChars + position, delimiters));
        if (first < length) {
            const auto token = TextCalls<T>::span_not(m_pChars + first, delimiters);
            position = first + static_cast<int>(token) + 1;
            return Mid(first, static_cast<int>(token));
        }
    }
    position = -1;
    return CZorStringT();
}

template class CZorStringT<char>;
template class CZorStringT<WCHAR>;

} // namespace zor_text
