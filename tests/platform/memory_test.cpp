#include "zorutils/platform/winapi.h"

#include <gtest/gtest.h>

#include <string.h>

namespace {

TEST(GlobalMemoryStatus, TellsFiguresThatFitEachOther)
{
    MEMORYSTATUS status;
    memset(&status, 0xEE, sizeof(status));
    GlobalMemoryStatus(&status);
    EXPECT_EQ(status.dwLength, sizeof(status));
    EXPECT_LE(status.dwMemoryLoad, 100u);
    EXPECT_GT(status.dwTotalPhys, 0u);
    EXPECT_GT(status.dwAvailPhys, 0u);
    EXPECT_LE(status.dwAvailPhys, status.dwTotalPhys);
    EXPECT_GE(status.dwTotalPageFile, status.dwTotalPhys);
    EXPECT_LE(status.dwAvailPageFile, status.dwTotalPageFile);
    EXPECT_GT(status.dwAvailVirtual, 0u);
    EXPECT_LT(status.dwAvailVirtual, status.dwTotalVirtual);
}

TEST(LocalAlloc, GivesABlockThatLocalFreeTakes)
{
    HLOCAL block = LocalAlloc(LMEM_FIXED, 100);
    ASSERT_NE(block, nullptr);
    memset(block, 1, 100);
    EXPECT_EQ(LocalFree(block), nullptr);
    block = LocalAlloc(LMEM_FIXED, 0);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(LocalFree(block), nullptr);
}

TEST(LocalAlloc, ReportsThatThereIsNoMemory)
{
    SetLastError(NO_ERROR);
    volatile SIZE_T too_much = SIZE_T(1) << 62;
    EXPECT_EQ(LocalAlloc(LMEM_FIXED, too_much), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NOT_ENOUGH_MEMORY));
}

} // namespace
