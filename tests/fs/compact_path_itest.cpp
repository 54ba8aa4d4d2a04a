#include "zorutils/fs/compact_path_internal.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

using zor_test::shown;
using zor_test::Wide;

namespace {

// Every character is as wide as any other.
std::string compact(const WCHAR* path, int width)
{
    return shown(FileFuncs::compact_path(
        path, [width](const Wide& text) { return text.GetLength() <= width; }));
}

} // namespace

TEST(CompactPath, LosesFoldersFromItsMiddle)
{
    struct Row
    {
        const WCHAR* path;
        int width;
        const char* compact;
    };
    const Row rows[] = {
        {ZOR_W("C:\\data\\job\\p.txt"), 17, "C:\\data\\job\\p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 16, "C:\\...\\job\\p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 15, "C:\\...\\p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 12, "C:\\...\\p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 11, "...\\p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 8, "p.txt"},
        {ZOR_W("C:\\data\\job\\p.txt"), 0, "p.txt"},
        {ZOR_W("\\\\host\\share\\job\\p.txt"), 20, "\\\\host\\...\\job\\p.txt"},
        {ZOR_W("/home/user/job/p.txt"), 19, "/home/.../job/p.txt"},
        {ZOR_W("p.txt"), 2, "p.txt"},
        {ZOR_W("C:\\p.txt"), 4, "p.txt"},
        {ZOR_W("folder\\"), 3, ""},
        {ZOR_W(""), 0, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(compact(row.path, row.width), row.compact) << shown(row.path) << " " << row.width;
}
