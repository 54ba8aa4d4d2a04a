#include "zorutils/fs/file_enumerator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <vector>

#include "tests/support/debug_capture.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using base::TFileEnumerator;
using namespace zor_test;

namespace {

constexpr int files = TFileEnumerator::FILE_TYPE_FILES;
constexpr int folders = TFileEnumerator::FILE_TYPE_DIRECTORIES;
constexpr int dot_dot = TFileEnumerator::FILE_TYPE_INCLUDE_DOT_DOT;

typedef std::multiset<std::string> Names;

class FileEnumerator : public testing::Test
{
protected:
    FileEnumerator()
    {
        namespace fs = std::filesystem;
        for (const char* sub : {"one", "two", "one/deep"})
            fs::create_directory(folder / sub);
        for (const char* name :
             {"a.txt", "b.dat", "one/c.txt", "one/d.dat", "two/e.dat", "one/deep/f.txt"})
            folder.write(name, "12345");
    }

    // Every name, in the order of the walk.
    static std::vector<std::string> list(TFileEnumerator& entries)
    {
        std::vector<std::string> names;
        for (Wide name = entries.Next(); !name.empty(); name = entries.Next())
            names.push_back(shown(name));
        EXPECT_TRUE(entries.Next().empty()) << "the end stays the end";
        return names;
    }

    Names names(bool recursive, int type, const WCHAR* pattern = ZOR_W(""))
    {
        TFileEnumerator entries(folder.wide(), recursive, type, pattern);
        const auto all = list(entries);
        return Names(all.begin(), all.end());
    }

    TempFolder folder;
};

// The current folder of the process, set back at the end.
class Inside
{
public:
    explicit Inside(const std::filesystem::path& path) : m_before(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~Inside() { std::filesystem::current_path(m_before); }

private:
    std::filesystem::path m_before;
};

} // namespace

TEST_F(FileEnumerator, TypesChooseWhatIsReported)
{
    EXPECT_EQ(names(false, files), (Names{"a.txt", "b.dat"}));
    EXPECT_EQ(names(false, folders), (Names{"one", "two"}));
    EXPECT_EQ(names(false, files | folders), (Names{"a.txt", "b.dat", "one", "two"}));
    EXPECT_EQ(names(false, folders | dot_dot), (Names{"..", "one", "two"}));
    EXPECT_EQ(names(false, files | dot_dot), (Names{"a.txt", "b.dat"})) << "it is a folder";
    EXPECT_EQ(names(false, 0), Names{});
}

TEST_F(FileEnumerator, APatternFilters)
{
    EXPECT_EQ(names(false, files, ZOR_W("*.txt")), Names{"a.txt"});
    EXPECT_EQ(names(false, files | folders, ZOR_W("?*o*")), (Names{"two"}));
    EXPECT_EQ(names(false, files, ZOR_W("none*")), Names{});
    TFileEnumerator all(folder.wide(), false, files);
    EXPECT_EQ(list(all).size(), 2u);
}

TEST_F(FileEnumerator, AMissingRootEndsAtOnce)
{
    for (const bool recursive : {false, true}) {
        TFileEnumerator entries(folder.wide("none"), recursive, files | folders);
        EXPECT_TRUE(entries.Next().empty());
        EXPECT_TRUE(entries.Next().empty());
    }
    TFileEnumerator of_a_file(folder.wide("a.txt"), false, files);
    EXPECT_TRUE(of_a_file.Next().empty());
}

// --- Three decisions that hosts rely on.

TEST_F(FileEnumerator, FoldersAreSearchedByTheirBareNameFromTheCurrentFolder)
{
    // From elsewhere the folders met are not found, and nothing is told.
    EXPECT_EQ(names(true, files), (Names{"a.txt", "b.dat"}));
    {
        const Inside inside(folder.path());
        // One level down they are; "deep" is met in "one" and sought beside it.
        EXPECT_EQ(names(true, files), (Names{"a.txt", "b.dat", "c.txt", "d.dat", "e.dat"}));
        EXPECT_EQ(names(true, files | folders),
                  (Names{"a.txt", "b.dat", "c.txt", "d.dat", "e.dat", "one", "two", "deep"}));
    }
    const Inside inside(folder / "one");
    EXPECT_EQ(names(true, files), (Names{"a.txt", "b.dat"})) << "neither one nor two are here";
}

TEST_F(FileEnumerator, AFolderEndsBeforeAnotherBeginsAndTheLastMetComesFirst)
{
    const Inside inside(folder.path());
    TFileEnumerator entries(folder.wide(), true, files | folders);
    const auto order = list(entries);
    std::vector<std::string> met, below;
    for (const std::string& name : order) {
        if (name == "one" || name == "two")
            met.push_back(name);
        if (name == "c.txt")
            below.push_back("one");
        if (name == "e.dat")
            below.push_back("two");
    }
    ASSERT_EQ(met.size(), 2u);
    ASSERT_EQ(below.size(), 2u);
    EXPECT_EQ(below[0], met[1]);
    EXPECT_EQ(below[1], met[0]);
    // The root's own entries come before all of theirs.
    const auto place = [&](const char* name) {
        return std::find(order.begin(), order.end(), name) - order.begin();
    };
    EXPECT_LT(place("b.dat"), place("c.txt"));
    EXPECT_LT(place("b.dat"), place("e.dat"));
    EXPECT_LT(place("two"), place("c.txt"));
}

TEST_F(FileEnumerator, ThePatternHoldsForTheRootAlone)
{
    folder.write("x.txt", "");
    const Inside inside(folder.path());
    // A pattern that meets the folder: everything in it counts.
    EXPECT_EQ(names(true, files, ZOR_W("*t*")), (Names{"a.txt", "b.dat", "x.txt", "e.dat"}));
    // A pattern that meets no folder leaves them out.
    EXPECT_EQ(names(true, files, ZOR_W("*.txt")), (Names{"a.txt", "x.txt"}));
    EXPECT_EQ(names(true, files, ZOR_W("o*")), (Names{"c.txt", "d.dat"}));
}

// --- What is told.

TEST_F(FileEnumerator, TheCurrentEntryIsTold)
{
    TFileEnumerator entries(folder.wide(), false, files, ZOR_W("a.txt"));
    WIN32_FIND_DATAW data = {};
    data.nFileSizeLow = 77;
    entries.GetFindInfo(&data);
    EXPECT_EQ(data.nFileSizeLow, 77u) << "nothing is found yet";
    EXPECT_EQ(shown(entries.Next()), "a.txt");
    entries.GetFindInfo(&data);
    EXPECT_EQ(shown(TFileEnumerator::GetFilename(data)), "a.txt");
    EXPECT_EQ(TFileEnumerator::GetFilesize(data), 5);
    EXPECT_FALSE(TFileEnumerator::IsDirectory(data));
    EXPECT_GT(TFileEnumerator::GetLastModifiedTime(data), 1700000000);
    EXPECT_TRUE(entries.Next().empty());
    data.nFileSizeLow = 78;
    entries.GetFindInfo(&data);
    EXPECT_EQ(data.nFileSizeLow, 78u) << "nothing is told behind the end";
}

TEST_F(FileEnumerator, FieldsOfFoundData)
{
    WIN32_FIND_DATAW data = {};
    EXPECT_FALSE(TFileEnumerator::IsDirectory(data));
    data.dwFileAttributes = 0x10;
    EXPECT_TRUE(TFileEnumerator::IsDirectory(data));
    data.dwFileAttributes = 0xFFFFFFEF;
    EXPECT_FALSE(TFileEnumerator::IsDirectory(data));
    data.nFileSizeHigh = 2;
    data.nFileSizeLow = 0xFFFFFFFF;
    EXPECT_EQ(TFileEnumerator::GetFilesize(data), 0x2FFFFFFFF);
    data.ftLastWriteTime = {0xD53E8000, 0x019DB1DE};
    EXPECT_EQ(TFileEnumerator::GetLastModifiedTime(data), 0);
}

TEST_F(FileEnumerator, RecursionWithTheParentIsLogged)
{
    const auto checks = [&](bool recursive, int type) {
        const DebugCapture log;
        const TFileEnumerator entries(folder.wide(), recursive, type);
        int count = 0;
        for (const std::u16string& text : log.texts())
            count += text.find(u"DBGCHK  fs\\platform_file @ ") != std::u16string::npos;
        return count;
    };
    EXPECT_EQ(checks(true, files | dot_dot), 1);
    EXPECT_EQ(checks(false, files | dot_dot), 0);
    EXPECT_EQ(checks(true, files | folders), 0);
}

TEST(FileEnumeratorNames, DotsAreComparedWhole)
{
    EXPECT_TRUE(base::IsDot(ZOR_W(".")));
    EXPECT_FALSE(base::IsDot(ZOR_W("..")));
    EXPECT_FALSE(base::IsDot(ZOR_W("")));
    EXPECT_FALSE(base::IsDot(ZOR_W(".a")));
    EXPECT_TRUE(base::IsDotDot(ZOR_W("..")));
    EXPECT_FALSE(base::IsDotDot(ZOR_W(".")));
    EXPECT_FALSE(base::IsDotDot(ZOR_W("...")));
}

TEST(FileEnumeratorLarge, EveryEntryOfALargeFolderComesOnce)
{
    const TempFolder folder;
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i)
        folder.write("file" + std::to_string(i), "");
    TFileEnumerator entries(folder.wide(), false, files);
    std::set<std::string> names;
    for (Wide name = entries.Next(); !name.empty(); name = entries.Next())
        EXPECT_TRUE(names.insert(shown(name)).second);
    EXPECT_EQ(names.size(), static_cast<size_t>(count));
}
