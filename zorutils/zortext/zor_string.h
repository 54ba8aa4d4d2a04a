// zorutils/zortext/zor_string.h: the string type of the library and of every module that loads it.
//
//     CZorStringT<WCHAR> name = ZOR_W("P0099");
//     CZorStringT<WCHAR> copy = name;          // shares the block
//     copy.SetAt(0, 'Q');                      // unshares it; name still says P0099
//     CZorStringT<char> bytes(name.c_str());   // through the active code page
//
// There are two instantiations: `char`, text in the active code page, and `WCHAR`, 16-bit UTF-16
// units. The object is one pointer wide and may be passed by value between modules: all members
// that touch memory are functions of the library, so one module allocates and frees every block.
//
// The text lies in a counted block, shared until somebody writes. A block is allocated to the exact
// size asked for. All empty strings of both widths share the nil block.
//
// Indices and lengths count characters of T and are checked nowhere unless the member says so.
// Members that look for text work on terminated text and stop at the first zero character.
//
// Errors: a failed allocation is std::bad_alloc. After it GetBuffer and every appending member
// leave the string as it was; writers that unshare first leave it empty.
//
// Threads: objects that share a block may live on different threads. One object is not protected.
#pragma once

#include <stdarg.h>

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string_data.h"

namespace zor_text {

template <class T>
class ZOR_API CZorStringT;

// The header of a block; the text follows it in the same allocation, nAllocLength + 1 characters.
template <class T>
struct CZorStringData
{
    LONG nRefCount;    // holders; -1 for the nil block and for a locked one; above 1 is shared
    LONG nDataLength;  // characters of the text, terminator not counted
    LONG nAllocLength; // capacity in characters, terminator not counted

    T* text() { return reinterpret_cast<T*>(this + 1); }
};

// The bridge from this string to a host framework's own string class: the framework's binding
// completes it. The first field is null until the binding fills it.
template <class T>
struct ZOR_API CMfcStringProxy
{
    void* m_pBound;
    CZorStringT<T>* m_pString;

    explicit CMfcStringProxy(CZorStringT<T>* string);
};

template <class T>
class ZOR_API CZorStringT
{
public:
    // --- Construction. A null text gives the empty string.

    CZorStringT();

    // Shares the source's block. A locked source is copied, up to its first zero character.
    CZorStringT(const CZorStringT& source);

    // A text of the same width; a pointer value that is not null and below 65536 is the number of
    // a string resource. A text of the other width is converted through the active code page and
    // is never a resource number.
    CZorStringT(const char* text);
    CZorStringT(const WCHAR* text);

    // Exactly `count` characters, zero characters included; converted if the width is the other.
    CZorStringT(const char* text, int count);
    CZorStringT(const WCHAR* text, int count);

    // `c` repeated `count` times; empty for a count below 1.
    CZorStringT(T c, int count);

    // As assignment from const char*: no resource number here.
    CZorStringT(const unsigned char* text);

    ~CZorStringT();

    // --- Assignment. No resource numbers.

    CZorStringT& operator=(const CZorStringT& source);

    // A null text of the same width empties. A null text of the other width leaves an unshared
    // string as it is and empties a shared one.
    CZorStringT& operator=(const char* text);
    CZorStringT& operator=(const WCHAR* text);
    CZorStringT& operator=(const unsigned char* text);

    // One character. A unit given to a narrow string keeps its low 8 bits; a byte given to a wide
    // string is sign-extended, not converted: 0xE9 becomes unit 0xFFE9.
    CZorStringT& operator=(char c);
    CZorStringT& operator=(WCHAR c);

    const CZorStringT& operator+=(const CZorStringT& source);
    const CZorStringT& operator+=(const T* text);
    const CZorStringT& operator+=(char c);
    const CZorStringT& operator+=(WCHAR c);

    // --- Reading. Never null, never checked; index GetLength() yields the terminator.

    int GetLength() const { return GetData()->nDataLength; }
    unsigned int length() const { return static_cast<unsigned int>(GetData()->nDataLength); }
    unsigned int size() const { return length(); }
    int GetAllocLength() const { return GetData()->nAllocLength; }
    int IsEmpty() const { return GetData()->nDataLength == 0 ? 1 : 0; }
    bool empty() const { return GetData()->nDataLength == 0; }
    operator const T*() const { return m_pChars; }
    const T* c_str() const { return m_pChars; }
    T GetAt(int index) const { return m_pChars[index]; }
    T operator[](int index) const { return m_pChars[index]; }

    // --- The buffer.

    // Room for at least `n` characters and the terminator, for this object alone, holding the
    // present text. Follow it by ReleaseBuffer. On an empty string GetBuffer(0) is the nil block's
    // terminator, to which nothing but zero may be written.
    T* GetBuffer(int n);

    // Ends what GetBuffer began: `n` is the new length, -1 measures it. Not held to the capacity.
    void ReleaseBuffer(int n = -1);

    T* GetBufferSetLength(int n);

    // GetBuffer(n), ReleaseBuffer(n). Not clamped on purpose: with `n` above the length the string
    // grows by whatever the buffer holds.
    void Truncate(int n);

    // Locks the buffer: it stays where it is and is never shared, until UnlockBuffer. Not nested;
    // no effect on the empty string.
    T* LockBuffer();
    void UnlockBuffer();

    void SetAt(int index, T c);

    // A locked string keeps its buffer and its lock.
    void Empty();

    // Gives spare capacity back.
    void FreeExtra();

    CMfcStringProxy<T> mfcString();

    // --- Substrings. A result that is the whole text shares the block.

    CZorStringT Left(int n) const;
    CZorStringT Right(int n) const;
    CZorStringT Mid(int first) const;
    // A negative `first` counts as 0 and does not shorten `count`.
    CZorStringT Mid(int first, int count) const;
    // The leading run of characters from, or outside, `set`.
    CZorStringT SpanIncluding(const T* set) const;
    CZorStringT SpanExcluding(const T* set) const;

    // --- Search: an index, or -1. A negative start is not tested.

    int Find(T c) const;
    int Find(const T* sub) const;
    // From `start`; a start at the length or beyond finds nothing.
    int Find(T c, int start) const;
    // From `start`; a start at the length is still searched: the empty text is found there.
    int Find(const T* sub, int start) const;
    int FindOneOf(const T* set) const;
    int ReverseFind(T c) const;

    // --- Edit. Indices of Insert and Delete are held to the text.

    // The new length.
    int Insert(int index, T c);
    int Insert(int index, const T* text);
    // The length before the deletion, on purpose.
    int Delete(int index, int count = 1);
    // The number of characters removed.
    int Remove(T c);
    // The number of replacements. Replaced text is not searched again; zero characters inside the
    // text are passed over; a null `replacement` deletes.
    int Replace(T old, T replacement);
    int Replace(const T* old, const T* replacement);
    void push_back(T c);
    CZorStringT& MakeUpper();
    CZorStringT& MakeLower();
    CZorStringT& MakeReverse();

    // White space by iswspace; on the narrow string each byte is sign-extended first, on purpose.
    CZorStringT& TrimLeft();
    CZorStringT& TrimLeft(T c);
    CZorStringT& TrimLeft(const T* set);
    CZorStringT& TrimRight();
    CZorStringT& TrimRight(T c);
    CZorStringT& TrimRight(const T* set);
    CZorStringT& Trim();
    CZorStringT& Trim(T c);
    CZorStringT& Trim(const T* set);

    // --- Comparison with a terminated text.

    // Unit by unit, unsigned: exactly -1, 0 or 1.
    int Compare(const T* text) const;
    int CompareNoCase(const T* text) const;
    int Collate(const T* text) const;
    int CollateNoCase(const T* text) const;

    // The next token from `position`, which moves behind the delimiter that ended it; -1 and the
    // empty string when there is none. A run of delimiters counts as one. With no delimiters the
    // rest is returned and `position` stays: such a loop does not end by itself.
    CZorStringT Tokenize(const T* delimiters, int& position) const;

    // --- Formatting. `%s` is text of this string's width. The result is cut at 131072 characters.

    void Format(const T* format, ...);
    void Format(unsigned int id, ...);
    void FormatV(const T* format, va_list arguments);

    // Positional inserts (%1!d!, %2) by the system's message formatter. Errors: std::bad_alloc,
    // also for a bad format. The narrow form hands its bytes to the wide formatter as they stand.
    void FormatMessageW(const T* format, ...);
    void FormatMessageW(unsigned int id, ...);

    // --- Resources and system strings.

    // Wide: 1 if a string that is not empty was loaded, else 0. Narrow: the opposite, on purpose.
    int LoadStringW(unsigned int id);

    // A new system string, to be freed by SysFreeString. Errors: std::bad_alloc.
    WCHAR* AllocSysString() const;
    // Replaces *target and returns it. Errors: std::bad_alloc.
    WCHAR* SetSysString(WCHAR** target) const;

protected:
    static CZorStringData<T>* get_afxDataNil();
    static const CZorStringT& AfxGetEmptyString();
    static const T& get_afxChNil();

    // Points at the shared empty string, without touching a count.
    void Init();
    // A new exclusive block of exactly `nLen` characters, uninitialised but for the terminator. The
    // old pointer is overwritten, not released. Errors: std::bad_alloc, with nothing changed.
    void AllocBuffer(int nLen);
    // Room for `nLen` characters for this object alone; the old text is not kept.
    void AllocBeforeWrite(int nLen);
    // Unshares. The old count is dropped before the copy is made: a throw leaves the string empty.
    void CopyBeforeWrite();
    // `dest` must not hold a block.
    void AllocCopy(CZorStringT& dest, int nCopyLen, int nCopyIndex, int nExtraLen) const;
    void AssignCopy(int nSrcLen, const T* src);
    void ConcatCopy(int nLen1, const T* s1, int nLen2, const T* s2);
    void ConcatInPlace(int nLen, const T* s);
    void Release();
    static void Release(CZorStringData<T>* data);
    static void FreeData(CZorStringData<T>* data);
    static int SafeStrlen(const T* text);

    CZorStringData<T>* GetData() const
    {
        return reinterpret_cast<CZorStringData<T>*>(m_pChars) - 1;
    }

private:
    bool IsNil() const { return GetData() == get_afxDataNil(); }
    LONG RefCount() const;
    void SetLength(int n);
    template <class From>
    void Construct(const From* text);
    template <class From>
    void ConstructCounted(const From* text, int count);
    template <class From>
    void Assign(const From* text);
    void GrowCopy(int n);
    bool OwnsText(const T* text) const;
    void OpenGap(int index, int count);
    void DropLeft(int n);
    void TerminateAt(int n);

    T* m_pChars; // the first character of the text, behind the block's header; never null
};

// Loads string resource `id` into `buffer` of `size` characters: the number of characters, 0 if
// there is none. A text that is too long is cut (wide) or not loaded at all (narrow).
ZOR_API int AfxLoadString(unsigned int id, char* buffer, unsigned int size);
ZOR_API int AfxLoadString(unsigned int id, WCHAR* buffer, unsigned int size);

namespace detail {

// Replaces the fields {1}, {2} ... of `format` by the `count` arguments behind it, each a
// const WCHAR*. "{{" is a literal brace. A field that is no number from 1 to `count`, or a count
// above 100, gives the empty string.
ZOR_API CZorStringT<WCHAR> zor_safefmt_impl(const WCHAR* format, unsigned int count, ...);

} // namespace detail

} // namespace zor_text
