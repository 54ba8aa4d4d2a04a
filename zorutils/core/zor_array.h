// zorutils/core/zor_array.h: the growing array of the exported signatures.
//
//     CZorArray<CZorStringT<WCHAR>, const CZorStringT<WCHAR>&> values;
//     zor_formats::ParseDelimitersValues(text, values, ZOR_W(","));
//     for (int i = 0; i < values.GetSize(); ++i)
//         Use(values[i]);
//     values.RemoveAll(); // the parsers append and never clear
//
// `Arg` is how an item is handed to a member, `const T&` in every signature of the library.
//
// Layout, growth, errors and threads are those of zor_vector: plain fields, safe to hand by
// reference from one module to another; an array grows in the module whose code calls Add, so all
// modules must share one allocator for operator new and operator delete.
//
// Indices are checked nowhere.
#pragma once

#include "zorutils/core/zor_vector.h"

namespace zor_templ {

template <class T, class Arg = const T&>
class CZorArray
{
public:
    CZorArray() noexcept = default;
    CZorArray(std::initializer_list<T> items) : m_items(items) {}

    int GetSize() const noexcept { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const noexcept { return m_items.empty(); }

    const T& GetAt(int index) const noexcept { return m_items[static_cast<size_t>(index)]; }
    const T& operator[](int index) const noexcept { return GetAt(index); }
    T& operator[](int index) noexcept { return m_items[static_cast<size_t>(index)]; }
    void SetAt(int index, Arg item) { m_items[static_cast<size_t>(index)] = item; }

    // The index of the new item, which is the last. `item` may be one of the array's own.
    int Add(Arg item)
    {
        m_items.push_back(item);
        return GetSize() - 1;
    }

    // Keeps the capacity.
    void RemoveAll() noexcept { m_items.clear(); }

    T* begin() noexcept { return m_items.begin(); }
    const T* begin() const noexcept { return m_items.begin(); }
    T* end() noexcept { return m_items.end(); }
    const T* end() const noexcept { return m_items.end(); }

private:
    zor_vector<T> m_items;
};

} // namespace zor_templ
