// zorutils/platform/posix/code_page_table.h: the conversion tables of one code page.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "zorutils/platform/win_types.h"

namespace zor {
namespace platform {

// Built once per page and never changed afterwards.
struct CodePageTable
{
    UINT page = 0;
    bool double_byte = false;
    WCHAR default_unit = '?';                  // stands for bytes that are no character
    std::array<WCHAR, 256> unit_of_byte{};     // of single bytes
    std::array<bool, 256> is_lead{};           // the first byte of two
    std::vector<WCHAR> unit_of_pair;           // double-byte pages: by lead * 256 + trail
    std::vector<unsigned short> bytes_of_unit; // by unit; above 255: two bytes, lead first
    std::vector<bool> exact;                   // by unit: the bytes lead back to it
};

// The table of a page, null if it cannot be had. Any thread; the table lives for ever.
const CodePageTable* code_page_table(UINT page);

} // namespace platform
} // namespace zor
