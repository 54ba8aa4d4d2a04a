// zorutils/zorsys/library_allocation.h: classes whose objects are made and released in the library.
//
//     class ZOR_API CTextFile              // text_file.h
//     {
//     public:
//         ZOR_LIBRARY_ALLOCATION
//     };
//
//     ZOR_DEFINE_LIBRARY_ALLOCATION(CTextFile)   // text_file.cpp
//
// Whichever module writes `new CTextFile` or `delete file`, the memory is the library's own: single
// objects and arrays come from zor_operator_new and go back to free. Placement gives the address as
// it is, and its delete does nothing.
//
// They are macros since these classes have no base class, and their members must be compiled into
// the library alone.
#pragma once

#include <stddef.h>
#include <stdlib.h>

#define ZOR_LIBRARY_ALLOCATION                                                                     \
    static void* operator new(size_t size);                                                        \
    static void* operator new[](size_t size);                                                      \
    static void* operator new(size_t size, void* place) noexcept;                                  \
    static void* operator new[](size_t size, void* place) noexcept;                                \
    static void operator delete(void* block, size_t size) noexcept;                                \
    static void operator delete[](void* block, size_t size) noexcept;                              \
    static void operator delete(void* block, void* place) noexcept;                                \
    static void operator delete[](void* block, void* place) noexcept;

#define ZOR_DEFINE_LIBRARY_ALLOCATION(Class)                                                       \
    void* Class::operator new(size_t size)                                                         \
    {                                                                                              \
        return zor_library_allocate(size);                                                         \
    }                                                                                              \
    void* Class::operator new[](size_t size)                                                       \
    {                                                                                              \
        return zor_library_allocate(size);                                                         \
    }                                                                                              \
    void* Class::operator new(size_t, void* place) noexcept                                        \
    {                                                                                              \
        return place;                                                                              \
    }                                                                                              \
    void* Class::operator new[](size_t, void* place) noexcept                                      \
    {                                                                                              \
        return place;                                                                              \
    }                                                                                              \
    void Class::operator delete(void* block, size_t) noexcept                                      \
    {                                                                                              \
        free(block);                                                                               \
    }                                                                                              \
    void Class::operator delete[](void* block, size_t) noexcept                                    \
    {                                                                                              \
        free(block);                                                                               \
    }                                                                                              \
    void Class::operator delete(void*, void*) noexcept {}                                          \
    void Class::operator delete[](void*, void*) noexcept {}

// zor_operator_new for sizes of any type: what 32 bits can't say can't be met.
void* zor_library_allocate(size_t size);
