// The block, the sharing, the lock, construction, assignment and conversion of the string.
#include "zorutils/zortext/zor_string.h"

#include <string.h>

#include <algorithm>
#include <new>

#include "zorutils/platform/interlocked.h"
#include "zorutils/zortext/zor_string_traits_internal.h"

namespace zor_text {

using zor::platform::interlocked_decrement;
using zor::platform::interlocked_increment;
using zor::platform::interlocked_load;
using zor::platform::interlocked_store;
namespace nil = zor_string_internal_data;

namespace {

template <class T>
void copy_text(T* to, const T* from, int count)
{
    // Overlap is allowed: a string may be assigned a part of itself.
    memmove(to, from, static_cast<size_t>(count) * sizeof(T));
}

} // namespace

template <class T>
CMfcStringProxy<T>::CMfcStringProxy(CZorStringT<T>* string) : m_pBound(nullptr), m_pString(string)
{
}

// --- The protected core.

template <class T>
CZorStringData<T>* CZorStringT<T>::get_afxDataNil()
{
    return reinterpret_cast<CZorStringData<T>*>(nil::g_afxInitData);
}

template <class T>
const CZorStringT<T>& CZorStringT<T>::AfxGetEmptyString()
{
    static_assert(sizeof(CZorStringT) == sizeof(void*), "the string is one pointer wide");
    return reinterpret_cast<const CZorStringT&>(nil::g_afxNilStr);
}

template <class T>
const T& CZorStringT<T>::get_afxChNil()
{
    if constexpr (std::is_same_v<T, char>)
        return nil::afxChNil;
    else
        return nil::afxChNilW;
}

template <class T>
void CZorStringT<T>::Init()
{
    m_pChars = static_cast<T*>(nil::g_afxNilStr);
}

template <class T>
LONG CZorStringT<T>::RefCount() const
{
    // Acquire: who finds itself the only holder must see that the others are done with the text.
    return interlocked_load(&GetData()->nRefCount);
}

template <class T>
void CZorStringT<T>::SetLength(int n)
{
    // The nil block holds these values already; not writing them keeps threads from racing on it.
    if (IsNil() && n == 0)
        return;
    GetData()->nDataLength = n;
    m_pChars[n] = 0;
}

template <class T>
void CZorStringT<T>::AllocBuffer(int nLen)
{
    if (nLen == 0) {
        Init();
        return;
    }
    const size_t units = static_cast<size_t>(nLen) + 1;
    void* block = ::operator new[](sizeof(CZorStringData<T>) + units * sizeof(T));
    auto* data = static_cast<CZorStringData<T>*>(block);
    data->nRefCount = 1;
    data->nDataLength = nLen;
    data->nAllocLength = nLen;
    m_pChars = data->text();
    m_pChars[nLen] = 0;
}

template <class T>
void CZorStringT<T>::AllocBeforeWrite(int nLen)
{
    if (RefCount() < 2 && nLen <= GetAllocLength())
        return;
    Release();
    AllocBuffer(nLen);
}

template <class T>
void CZorStringT<T>::CopyBeforeWrite()
{
    if (RefCount() <= 1)
        return;
    // This object lets go first, on purpose: a throw from the allocation leaves it empty. Its count
    // goes over to a local holder, so that no other thread can free the text while it is copied.
    struct Holder
    {
        CZorStringData<T>* data;
        ~Holder() { Release(data); }
    };
    const Holder old{GetData()};
    Init();
    AllocBuffer(old.data->nDataLength);
    copy_text(m_pChars, old.data->text(), old.data->nDataLength);
}

template <class T>
void CZorStringT<T>::AllocCopy(CZorStringT& dest, int nCopyLen, int nCopyIndex, int nExtraLen) const
{
    if (nCopyLen + nExtraLen == 0) {
        dest.Init();
        return;
    }
    dest.AllocBuffer(nCopyLen + nExtraLen);
    copy_text(dest.m_pChars, m_pChars + nCopyIndex, nCopyLen);
}

template <class T>
void CZorStringT<T>::AssignCopy(int nSrcLen, const T* src)
{
    AllocBeforeWrite(nSrcLen);
    if (nSrcLen != 0)
        copy_text(m_pChars, src, nSrcLen);
    SetLength(nSrcLen);
}

template <class T>
void CZorStringT<T>::ConcatCopy(int nLen1, const T* s1, int nLen2, const T* s2)
{
    if (nLen1 + nLen2 == 0)
        return;
    AllocBuffer(nLen1 + nLen2);
    copy_text(m_pChars, s1, nLen1);
    copy_text(m_pChars + nLen1, s2, nLen2);
}

template <class T>
void CZorStringT<T>::ConcatInPlace(int nLen, const T* s)
{
    if (nLen == 0)
        return;
    const int length = GetLength();
    if (RefCount() <= 1 && nLen <= GetAllocLength() - length) {
        copy_text(m_pChars + length, s, nLen);
        SetLength(length + nLen);
        return;
    }
    CZorStringData<T>* const old = GetData();
    ConcatCopy(length, old->text(), nLen, s);
    Release(old);
}

template <class T>
void CZorStringT<T>::Release()
{
    if (IsNil())
        return;
    Release(GetData());
    Init();
}

template <class T>
void CZorStringT<T>::Release(CZorStringData<T>* data)
{
    if (data != get_afxDataNil() && interlocked_decrement(&data->nRefCount) <= 0)
        FreeData(data);
}

template <class T>
void CZorStringT<T>::FreeData(CZorStringData<T>* data)
{
    ::operator delete[](static_cast<void*>(data));
}

template <class T>
int CZorStringT<T>::SafeStrlen(const T* text)
{
    return text == nullptr ? 0 : TextCalls<T>::length(text);
}

// --- Construction. The constructors that can throw delegate, so that what they hold is released.

template <class T>
CZorStringT<T>::CZorStringT()
{
    Init();
}

template <class T>
CZorStringT<T>::CZorStringT(const CZorStringT& source) : CZorStringT()
{
    if (source.RefCount() >= 0) {
        m_pChars = source.m_pChars;
        interlocked_increment(&GetData()->nRefCount);
        return;
    }
    // Neither the nil block nor a locked one is counted. A locked text is copied as a terminated
    // text, on purpose: the copy ends at its first zero character.
    *this = source.m_pChars;
}

template <class T>
CZorStringT<T>::CZorStringT(const char* text) : CZorStringT()
{
    Construct(text);
}

template <class T>
CZorStringT<T>::CZorStringT(const WCHAR* text) : CZorStringT()
{
    Construct(text);
}

template <class T>
template <class From>
void CZorStringT<T>::Construct(const From* text)
{
    if constexpr (std::is_same_v<T, From>) {
        const auto value = reinterpret_cast<uintptr_t>(text);
        if (value != 0 && value < 65536) {
            LoadStringW(static_cast<unsigned int>(value));
            return;
        }
    }
    if (text != nullptr && *text != 0)
        *this = text;
}

template <class T>
CZorStringT<T>::CZorStringT(const char* text, int count) : CZorStringT()
{
    ConstructCounted(text, count);
}

template <class T>
CZorStringT<T>::CZorStringT(const WCHAR* text, int count) : CZorStringT()
{
    ConstructCounted(text, count);
}

template <class T>
template <class From>
void CZorStringT<T>::ConstructCounted(const From* text, int count)
{
    if (count == 0)
        return;
    if constexpr (std::is_same_v<T, From>) {
        AllocBuffer(count);
        copy_text(m_pChars, text, count);
    } else {
        const int needed = convert(text, count, static_cast<T*>(nullptr), 0);
        AllocBuffer(needed);
        if (needed == 0)
            return;
        const int converted = convert(text, count, m_pChars, needed + 1);
        ReleaseBuffer(converted >= 0 ? converted : -1);
    }
}

template <class T>
CZorStringT<T>::CZorStringT(T c, int count) : CZorStringT()
{
    if (count < 1)
        return;
    AllocBuffer(count);
    std::fill_n(m_pChars, count, c);
}

template <class T>
CZorStringT<T>::CZorStringT(const unsigned char* text) : CZorStringT()
{
    *this = text;
}

template <class T>
CZorStringT<T>::~CZorStringT()
{
    // A locked block counts -1, goes to -2 and is freed.
    Release(GetData());
}

// --- Assignment.

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(const CZorStringT& source)
{
    if (m_pChars == source.m_pChars)
        return *this;
    const bool locked = RefCount() < 0 && !IsNil();
    if (locked || source.RefCount() < 0) {
        AssignCopy(source.GetLength(), source.m_pChars);
    } else {
        Release();
        m_pChars = source.m_pChars;
        interlocked_increment(&GetData()->nRefCount);
    }
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(const char* text)
{
    Assign(text);
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(const WCHAR* text)
{
    Assign(text);
    return *this;
}

template <class T>
template <class From>
void CZorStringT<T>::Assign(const From* text)
{
    if constexpr (std::is_same_v<T, From>) {
        AssignCopy(SafeStrlen(text), text);
    } else {
        const int length = text == nullptr ? 0 : TextCalls<From>::length(text);
        const int count = length == 0 ? 0 : convert(text, length, static_cast<T*>(nullptr), 0);
        AllocBeforeWrite(count);
        if (IsNil())
            return;
        // A null source fails here without writing, and the old text is measured again: it stays,
        // on purpose, if this object was its only holder.
        convert(text, -1, m_pChars, count + 1);
        ReleaseBuffer(-1);
    }
}

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(const unsigned char* text)
{
    return *this = reinterpret_cast<const char*>(text);
}

namespace {

// The character that one of the other width becomes, on purpose without the code page: a unit
// keeps its low 8 bits, a byte is sign-extended.
template <class T, class From>
T plain_character(From c)
{
    if constexpr (std::is_same_v<T, From>)
        return c;
    else if constexpr (std::is_same_v<T, char>)
        return static_cast<char>(static_cast<unsigned char>(c & 0xFF));
    else
        return static_cast<WCHAR>(static_cast<signed char>(c));
}

} // namespace

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(char c)
{
    const T character = plain_character<T>(c);
    AssignCopy(1, &character);
    return *this;
}

template <class T>
CZorStringT<T>& CZorStringT<T>::operator=(WCHAR c)
{
    const T character = plain_character<T>(c);
    AssignCopy(1, &character);
    return *this;
}

template <class T>
const CZorStringT<T>& CZorStringT<T>::operator+=(const CZorStringT& source)
{
    ConcatInPlace(source.GetLength(), source.m_pChars);
    return *this;
}

template <class T>
const CZorStringT<T>& CZorStringT<T>::operator+=(const T* text)
{
    ConcatInPlace(SafeStrlen(text), text);
    return *this;
}

template <class T>
const CZorStringT<T>& CZorStringT<T>::operator+=(char c)
{
    const T character = plain_character<T>(c);
    ConcatInPlace(1, &character);
    return *this;
}

template <class T>
const CZorStringT<T>& CZorStringT<T>::operator+=(WCHAR c)
{
    const T character = plain_character<T>(c);
    ConcatInPlace(1, &character);
    return *this;
}

// --- The buffer.

template <class T>
T* CZorStringT<T>::GetBuffer(int n)
{
    if (RefCount() > 1 || n > GetAllocLength())
        GrowCopy(std::max(n, GetLength()));
    return m_pChars;
}

// A new block of `n` characters that holds the present text; the old block is held until then, so
// a throw leaves the string as it was.
template <class T>
void CZorStringT<T>::GrowCopy(int n)
{
    CZorStringData<T>* const old = GetData();
    const int length = old->nDataLength;
    AllocBuffer(n);
    copy_text(m_pChars, old->text(), length);
    SetLength(length);
    Release(old);
}

template <class T>
void CZorStringT<T>::ReleaseBuffer(int n)
{
    CopyBeforeWrite();
    SetLength(n == -1 ? TextCalls<T>::length(m_pChars) : n);
}

template <class T>
T* CZorStringT<T>::GetBufferSetLength(int n)
{
    GetBuffer(n);
    SetLength(n);
    return m_pChars;
}

template <class T>
void CZorStringT<T>::Truncate(int n)
{
    GetBuffer(n);
    ReleaseBuffer(n);
}

template <class T>
T* CZorStringT<T>::LockBuffer()
{
    GetBuffer(0);
    if (!IsNil())
        interlocked_store(&GetData()->nRefCount, -1);
    return m_pChars;
}

template <class T>
void CZorStringT<T>::UnlockBuffer()
{
    if (!IsNil())
        interlocked_store(&GetData()->nRefCount, 1);
}

template <class T>
void CZorStringT<T>::SetAt(int index, T c)
{
    CopyBeforeWrite();
    m_pChars[index] = c;
}

template <class T>
void CZorStringT<T>::Empty()
{
    if (GetLength() == 0)
        return;
    if (RefCount() >= 0)
        Release();
    else
        AssignCopy(0, &get_afxChNil());
}

template <class T>
void CZorStringT<T>::FreeExtra()
{
    CZorStringData<T>* const old = GetData();
    if (old->nDataLength == old->nAllocLength)
        return;
    AllocBuffer(old->nDataLength);
    copy_text(m_pChars, old->text(), old->nDataLength);
    Release(old);
}

template <class T>
CMfcStringProxy<T> CZorStringT<T>::mfcString()
{
    return CMfcStringProxy<T>(this);
}

template struct CMfcStringProxy<char>;
template struct CMfcStringProxy<WCHAR>;
template class CZorStringT<char>;
template class CZorStringT<WCHAR>;

} // namespace zor_text
