// zorutils/core/zor_list.h: a list whose add yields a position, an object of its own.
//
//     CZorList<Token> tokens;
//     std::unique_ptr<ZorTemplPositionImplBase> where(tokens.AddTail(token));
//     tokens.GetAt(*where).value.Empty();
//     while (tokens.GetSize() != 0)
//         Use(tokens.RemoveHead());
//
// A position is allocated apart from the list and belongs to whoever got it, who deletes it. It
// stays good while its element is in the list.
//
// Errors: std::bad_alloc, or what an item's copy throws; the list is then as it was.
//
// Threads: one object is not protected.
#pragma once

#include <iterator>
#include <list>
#include <memory>
#include <utility>

namespace zor_templ {

// A position, whatever the list. The order of the virtual operations is part of the interface.
class ZorTemplPositionImplBase
{
public:
    virtual ~ZorTemplPositionImplBase() = default;

    // A new position on the same element; the caller deletes it.
    [[nodiscard]] virtual ZorTemplPositionImplBase* Clone() const = 0;

    // Takes the place of `other`, which must be a position of a list of the same type.
    virtual void Assign(const ZorTemplPositionImplBase& other) = 0;

protected:
    ZorTemplPositionImplBase() = default;
    ZorTemplPositionImplBase(const ZorTemplPositionImplBase&) = default;
    ZorTemplPositionImplBase& operator=(const ZorTemplPositionImplBase&) = default;
};

// A position that holds one iterator.
template <class Iterator>
class ZorTemplPositionImpl : public ZorTemplPositionImplBase
{
public:
    explicit ZorTemplPositionImpl(Iterator at) : m_at(at) {}

    [[nodiscard]] ZorTemplPositionImplBase* Clone() const override
    {
        return new ZorTemplPositionImpl(m_at);
    }

    void Assign(const ZorTemplPositionImplBase& other) override
    {
        m_at = static_cast<const ZorTemplPositionImpl&>(other).m_at;
    }

    Iterator m_at;
};

template <class T, class Arg = const T&>
class CZorList
{
public:
    typedef typename std::list<T>::iterator iterator;
    typedef typename std::list<T>::const_iterator const_iterator;
    typedef ZorTemplPositionImpl<iterator> Position;

    int GetSize() const noexcept { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const noexcept { return m_items.empty(); }

    // The position of the new item, which the caller deletes.
    [[nodiscard]] ZorTemplPositionImplBase* AddTail(Arg item)
    {
        // The position first, so that no item is left behind when there is no memory for it.
        auto position = std::make_unique<Position>(m_items.end());
        m_items.push_back(item);
        position->m_at = std::prev(m_items.end());
        return position.release();
    }

    // `position` must come from this list.
    T& GetAt(const ZorTemplPositionImplBase& position)
    {
        return *static_cast<const Position&>(position).m_at;
    }

    // The list must not be empty.
    T& GetHead() { return m_items.front(); }
    const T& GetHead() const { return m_items.front(); }

    // Takes the first item out. The list must not be empty.
    T RemoveHead()
    {
        T item(std::move(m_items.front()));
        m_items.pop_front();
        return item;
    }

    void RemoveAll() noexcept { m_items.clear(); }

    iterator begin() noexcept { return m_items.begin(); }
    const_iterator begin() const noexcept { return m_items.begin(); }
    iterator end() noexcept { return m_items.end(); }
    const_iterator end() const noexcept { return m_items.end(); }

private:
    std::list<T> m_items;
};

} // namespace zor_templ
