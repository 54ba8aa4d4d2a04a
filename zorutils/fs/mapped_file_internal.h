// zorutils/fs/mapped_file_internal.h: a file as memory, read-only.
#pragma once

#include "zorutils/platform/win_types.h"

// Owns the view. Threads: one object belongs to one.
class CMappedFile
{
public:
    CMappedFile() = default;
    ~CMappedFile() { Close(); }
    CMappedFile(const CMappedFile&) = delete;
    CMappedFile& operator=(const CMappedFile&) = delete;

    // False, with nothing open, on any failure; an empty file is one.
    bool Open(const WCHAR* path);
    void Close();

    const unsigned char* data() const { return static_cast<const unsigned char*>(m_view); }
    unsigned int size() const { return m_size; } // bytes

private:
    HANDLE m_file = reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1)); // while closed
    HANDLE m_mapping = nullptr;
    void* m_view = nullptr;
    DWORD m_size = 0;
    bool m_valid = false;
};
