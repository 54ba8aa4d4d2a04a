// zorutils/core/zor_vector.h: the vector that stands in exported signatures.
//
//     zor_vector<CZorStringT<WCHAR>> names;
//     names.push_back(ZOR_W("P1"));
//     for (const CZorStringT<WCHAR>& name : names) ...
//
// Its layout is its own (pointer, size, capacity) and depends on no run-time library, so a vector
// may be handed by reference from one module to another. The code is in this header: a vector grows
// in the module that calls push_back and is freed in the module that owns it, so all modules must
// share one allocator for operator new and operator delete, as those of one C++ run-time do.
//
// Indices are checked nowhere. Growing moves the items: pointers, references and iterators into the
// vector are then void.
//
// Errors: std::bad_alloc, or what an item's copy throws; the vector is then as it was.
//
// Threads: one object is not protected.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

template <class T>
class zor_vector
{
    static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__, "plain operator new is used");

public:
    typedef T value_type;
    typedef T* iterator;
    typedef const T* const_iterator;

    zor_vector() noexcept : m_items(nullptr), m_size(0), m_capacity(0) {}
    zor_vector(const zor_vector& source) : zor_vector() { append(source.begin(), source.size()); }
    zor_vector(zor_vector&& source) noexcept : zor_vector() { swap(source); }
    zor_vector(std::initializer_list<T> items) : zor_vector()
    {
        append(items.begin(), items.size());
    }
    ~zor_vector()
    {
        clear();
        deallocate(m_items);
    }

    // By value: serves copies and moves, and an item of the vector itself.
    zor_vector& operator=(zor_vector source) noexcept
    {
        swap(source);
        return *this;
    }

    void swap(zor_vector& other) noexcept
    {
        std::swap(m_items, other.m_items);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }

    size_t size() const noexcept { return m_size; }
    size_t capacity() const noexcept { return m_capacity; }
    bool empty() const noexcept { return m_size == 0; }

    T* data() noexcept { return m_items; }
    const T* data() const noexcept { return m_items; }
    T& operator[](size_t index) noexcept { return m_items[index]; }
    const T& operator[](size_t index) const noexcept { return m_items[index]; }
    T& front() noexcept { return m_items[0]; }
    const T& front() const noexcept { return m_items[0]; }
    T& back() noexcept { return m_items[m_size - 1]; }
    const T& back() const noexcept { return m_items[m_size - 1]; }

    iterator begin() noexcept { return m_items; }
    const_iterator begin() const noexcept { return m_items; }
    iterator end() noexcept { return m_items + m_size; }
    const_iterator end() const noexcept { return m_items + m_size; }

    // `item` may be one of the vector's own.
    void push_back(const T& item)
    {
        if (m_size < m_capacity) {
            new (static_cast<void*>(m_items + m_size)) T(item);
            ++m_size;
            return;
        }
        zor_vector grown;
        grown.allocate(grown_capacity());
        // The new item first: it may be one of those that are about to move.
        T* const place = grown.m_items + m_size;
        new (static_cast<void*>(place)) T(item);
        try {
            move_items_to(grown);
        } catch (...) {
            place->~T();
            throw;
        }
        ++grown.m_size;
        swap(grown);
    }

    // Room for `count` items in all; never gives room back.
    void reserve(size_t count)
    {
        if (count <= m_capacity)
            return;
        zor_vector grown;
        grown.allocate(count);
        move_items_to(grown);
        swap(grown);
    }

    // Keeps the capacity.
    // The vector must not be empty.
    void pop_back() noexcept { m_items[--m_size].~T(); }

    void clear() noexcept
    {
        std::destroy_n(m_items, m_size);
        m_size = 0;
    }

private:
    void append(const T* items, size_t count)
    {
        if (count == 0)
            return;
        allocate(count);
        std::uninitialized_copy_n(items, count, m_items);
        m_size = count;
    }

    // Only for an object that holds nothing.
    void allocate(size_t count)
    {
        if (count > static_cast<size_t>(PTRDIFF_MAX) / sizeof(T))
            throw std::bad_alloc();
        m_items = static_cast<T*>(::operator new(count * sizeof(T)));
        m_capacity = count;
    }

    static void deallocate(T* items) noexcept { ::operator delete(static_cast<void*>(items)); }

    size_t grown_capacity() const noexcept
    {
        constexpr size_t first_capacity = 8;
        return m_capacity == 0 ? first_capacity : m_capacity + m_capacity / 2;
    }

    // Moves only where a move cannot fail, so that a failure leaves the items where they are.
    void move_items_to(zor_vector& target)
    {
        if constexpr (std::is_nothrow_move_constructible<T>::value)
            std::uninitialized_move_n(m_items, m_size, target.m_items);
        else
            std::uninitialized_copy_n(m_items, m_size, target.m_items);
        target.m_size = m_size;
    }

    T* m_items;        // null or room for m_capacity items, the first m_size of them alive
    size_t m_size;     // items
    size_t m_capacity; // items
};
