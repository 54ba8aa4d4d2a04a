#include "zorutils/fs/mapped_file_internal.h"

#include "zorutils/platform/winapi.h"

bool CMappedFile::Open(const WCHAR* path)
{
    Close();
    m_file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (m_file != INVALID_HANDLE_VALUE)
        m_mapping = CreateFileMappingW(m_file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (m_mapping != nullptr)
        m_view = MapViewOfFile(m_mapping, FILE_MAP_READ, 0, 0, 0);
    if (m_view != nullptr)
        m_size = GetFileSize(m_file, nullptr);
    m_valid = m_view != nullptr && m_size != INVALID_FILE_SIZE;
    if (!m_valid)
        Close();
    return m_valid;
}

void CMappedFile::Close()
{
    if (m_view != nullptr)
        UnmapViewOfFile(m_view);
    if (m_mapping != nullptr)
        CloseHandle(m_mapping);
    if (m_file != INVALID_HANDLE_VALUE)
        CloseHandle(m_file);
    m_file = INVALID_HANDLE_VALUE;
    m_mapping = nullptr;
    m_view = nullptr;
    m_size = 0;
    m_valid = false;
}
