#include "zorutils/fs/file_names.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

using namespace zor::file_names;
using zor_test::shown;
using zor_test::Wide;

namespace {

struct Parts
{
    const WCHAR* path;
    int name_start, ext_start;
    const char *name, *base, *ext, *without_ext, *folder_slash, *folder;
};

} // namespace

TEST(FileNames, ArePartsOfThePath)
{
    const Parts rows[] = {
        {ZOR_W("C:\\data\\p.txt"), 8, 9, "p.txt", "p", "txt", "C:\\data\\p", "C:\\data\\",
         "C:\\data"},
        {ZOR_W("a/b\\c"), 4, 5, "c", "c", "", "a/b\\c", "a/b\\", "a/b"},
        {ZOR_W("a\\b/c"), 4, 5, "c", "c", "", "a\\b/c", "a\\b/", "a\\b"},
        {ZOR_W("name"), 0, 4, "name", "name", "", "name", "", ""},
        {ZOR_W("a.tar.gz"), 0, 5, "a.tar.gz", "a.tar", "gz", "a.tar", "", ""},
        {ZOR_W("name."), 0, 4, "name.", "name", "", "name", "", ""},
        {ZOR_W("\\name"), 1, 5, "name", "name", "", "\\name", "\\", ""},
        {ZOR_W("/name"), 1, 5, "name", "name", "", "/name", "/", ""},
        {ZOR_W("folder\\"), 7, 7, "", "", "", "folder\\", "folder\\", "folder"},
        {ZOR_W(""), 0, 0, "", "", "", "", "", ""},
        {ZOR_W("."), 0, 0, ".", "", "", "", "", ""},
        {ZOR_W(".hidden"), 0, 0, ".hidden", "", "hidden", "", "", ""},
        {ZOR_W("\\"), 1, 1, "", "", "", "\\", "\\", ""},
        {ZOR_W("a\\\\b.c"), 3, 4, "b.c", "b", "c", "a\\\\b", "a\\\\", "a\\"},
        // The dot of a folder counts, on purpose, where the file name has none.
        {ZOR_W("a.b\\c"), 4, 1, "c", "", "b\\c", "a", "a.b\\", "a.b"},
        {ZOR_W("a.b/c.d"), 4, 5, "c.d", "c", "d", "a.b/c", "a.b/", "a.b"},
    };
    for (const Parts& row : rows) {
        const Wide path(row.path);
        SCOPED_TRACE(shown(path));
        EXPECT_EQ(GetFileNameStart(path), row.name_start);
        EXPECT_EQ(GetFileExtStart(path), row.ext_start);
        EXPECT_EQ(shown(ExtractFileNameWithExtFromPathName(path)), row.name);
        EXPECT_EQ(shown(ExtractFileNameWithoutExtFromPathName(path)), row.base);
        EXPECT_EQ(shown(ExtractFileNameExtFromPathName(path)), row.ext);
        EXPECT_EQ(shown(ExtractPathNameWithoutExtFromPathName(path)), row.without_ext);
        EXPECT_EQ(shown(ExtractDirNameWithSlashFromPathName(path)), row.folder_slash);
        EXPECT_EQ(shown(ExtractDirNameWithoutSlashFromPathName(path)), row.folder);
    }
}

TEST(FileNames, ANegativeCountGivesWhatMidGives)
{
    const Wide path(ZOR_W("a.b\\c"));
    EXPECT_EQ(shown(ExtractFileNameWithoutExtFromPathName(path)), shown(path.Mid(4, 1 - 4)));
}

TEST(FileNames, ComeAllAtOnce)
{
    struct Row
    {
        const WCHAR* path;
        bool result;
        const char *name, *base, *ext, *parent_name, *parent_path;
    };
    const Row rows[] = {
        {ZOR_W("C:\\data\\job\\p.txt"), true, "p.txt", "p", "txt", "job", "C:\\data"},
        {ZOR_W("job\\p.txt"), true, "p.txt", "p", "txt", "job", ""},
        {ZOR_W("p.txt"), true, "p.txt", "p", "txt", "", ""},
        {ZOR_W("C:\\data\\job\\p"), false, "p", "p", "", "job", "C:\\data"},
        {ZOR_W("C:\\data\\job\\p."), false, "p.", "p", "", "job", "C:\\data"},
        {ZOR_W("\\p.txt"), true, "p.txt", "p", "txt", "", ""},
    };
    for (const Row& row : rows) {
        const Wide path(row.path);
        SCOPED_TRACE(shown(path));
        Wide name("old"), base("old"), ext("old"), parent("old"), parents("old");
        EXPECT_EQ(
            ExtractFileNameAndExtAndParentDirFromPathName(path, name, base, ext, parent, parents),
            row.result);
        EXPECT_EQ(shown(name), row.name);
        EXPECT_EQ(shown(base), row.base);
        EXPECT_EQ(shown(ext), row.ext);
        EXPECT_EQ(shown(parent), row.parent_name);
        EXPECT_EQ(shown(parents), row.parent_path);
    }
}

TEST(FileNames, MayBeTakenIntoThePathItself)
{
    Wide path(ZOR_W("C:\\data\\job\\p.txt")), base, ext, parent, parents;
    EXPECT_TRUE(ExtractFileNameAndExtAndParentDirFromPathName(Wide(path), path, base, ext, parent,
                                                              parents));
    EXPECT_EQ(shown(path), "p.txt");
}
