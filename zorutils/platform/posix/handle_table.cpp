#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/fault_mutex.h"

#include <utility>
#include <vector>

namespace zor::platform {

namespace {

struct Slot
{
    std::shared_ptr<HandleObject> object;
    uint32_t generation = 0; // counts the handles that this slot has had
};

struct Table
{
    FaultMutex mutex;
    std::vector<Slot> slots;
    std::vector<uint32_t> free_slots;
    size_t open = 0;
};

// Never destroyed: objects that live to the end of the process may still close handles.
Table& table()
{
    static Table& instance = *new Table;
    return instance;
}

// Value: generation, slot number plus one (24 bits), and two zero bits, as the system's own have.
constexpr unsigned index_bits = 24;
constexpr uintptr_t index_mask = (uintptr_t(1) << index_bits) - 1;

HANDLE handle_of(uint32_t index, uint32_t generation)
{
    const uintptr_t value = (uintptr_t(generation) << index_bits) | (uintptr_t(index) + 1);
    return reinterpret_cast<HANDLE>(value << 2);
}

// The slot of an open handle, or null. The table is locked.
Slot* slot_of(Table& handles, HANDLE handle)
{
    const auto value = reinterpret_cast<uintptr_t>(handle);
    const uintptr_t index = ((value >> 2) & index_mask) - 1;
    if ((value & 3) != 0 || index >= handles.slots.size())
        return nullptr;
    Slot& slot = handles.slots[index];
    const bool current = handle_of(static_cast<uint32_t>(index), slot.generation) == handle;
    return slot.object && current ? &slot : nullptr;
}

} // namespace

HANDLE add_handle(std::shared_ptr<HandleObject> object)
{
    Table& handles = table();
    const FaultLock lock(handles.mutex);
    if (handles.free_slots.empty()) {
        if (handles.slots.size() >= index_mask)
            throw std::bad_alloc();
        // Room for every slot's number is made now, so that closing needs no memory.
        handles.free_slots.reserve(handles.slots.size() + 1);
        handles.slots.emplace_back();
        handles.free_slots.push_back(static_cast<uint32_t>(handles.slots.size() - 1));
    }
    const uint32_t index = handles.free_slots.back();
    handles.free_slots.pop_back();
    Slot& slot = handles.slots[index];
    slot.object = std::move(object);
    ++slot.generation;
    ++handles.open;
    return handle_of(index, slot.generation);
}

std::shared_ptr<HandleObject> find_handle(HANDLE handle) noexcept
{
    Table& handles = table();
    const FaultLock lock(handles.mutex);
    const Slot* slot = slot_of(handles, handle);
    return slot ? slot->object : nullptr;
}

std::shared_ptr<HandleObject> remove_handle(HANDLE handle) noexcept
{
    Table& handles = table();
    const FaultLock lock(handles.mutex);
    Slot* slot = slot_of(handles, handle);
    if (!slot)
        return nullptr;
    handles.free_slots.push_back(static_cast<uint32_t>(slot - handles.slots.data()));
    --handles.open;
    return std::exchange(slot->object, nullptr);
}

BOOL close_handle(HANDLE handle) noexcept
{
    const std::shared_ptr<HandleObject> object = remove_handle(handle);
    if (!object)
        return fail_with(ERROR_INVALID_HANDLE, FALSE);
    // Another thread is still inside a call on it: it releases the object when it leaves, and
    // nobody hears of an error then. Nobody new can come in.
    if (object.use_count() > 1)
        return TRUE;
    const DWORD error = object->close();
    return error == ERROR_SUCCESS ? TRUE : fail_with(error, FALSE);
}

size_t open_handle_count() noexcept
{
    Table& handles = table();
    const FaultLock lock(handles.mutex);
    return handles.open;
}

} // namespace zor::platform
