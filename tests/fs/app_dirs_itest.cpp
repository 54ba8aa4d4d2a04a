#include "zorutils/fs/app_dirs_internal.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/fs/app_dirs.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;

namespace {

class AppDirs : public testing::Test
{
protected:
    AppDirs()
    {
        std::filesystem::create_directories(folder / "Survey/components");
        Wide path = folder.wide();
        path.Replace(static_cast<WCHAR>('/'), static_cast<WCHAR>('\\'));
        path += ZOR_W("\\Survey");
        exe = path;
    }
    ApplicationDirs find()
    {
        Wide library = exe;
        library += ZOR_W("\\zorutils.dll");
        return find_application_dirs(library, ZOR_W("D:\\else\\road.exe"));
    }
    static std::string known(int number)
    {
        WCHAR path[MAX_PATH] = {};
        SHGetFolderPathW(nullptr, number, nullptr, 0, path);
        return shown(path);
    }

    TempFolder folder;
    Wide exe;
};

} // namespace

TEST_F(AppDirs, AreTheSystemsFoldersWithTheNameOfTheLibrarys)
{
    const ApplicationDirs dirs = find();
    EXPECT_EQ(shown(dirs.exeDir), shown(exe));
    EXPECT_EQ(shown(dirs.applicationPath), shown(exe) + "\\road.exe");
    EXPECT_EQ(shown(dirs.rootDir), known(CSIDL_APPDATA) + "\\Survey");
    EXPECT_EQ(shown(dirs.docsDir), known(CSIDL_PERSONAL) + "\\Survey");
    EXPECT_EQ(shown(dirs.commonDataDir), known(CSIDL_COMMON_APPDATA));
    EXPECT_TRUE(dirs.isInstalled);
    EXPECT_EQ(shown(dirs.geoidsFolder), "");
    EXPECT_EQ(shown(app_data_dir(dirs)), known(CSIDL_COMMON_APPDATA) + "\\OSTREL");
    EXPECT_EQ(shown(geo_data_dir(dirs)), known(CSIDL_COMMON_APPDATA) + "\\OSTREL\\Geo\\2.0\\");
    EXPECT_EQ(shown(geoids_data_dir(dirs)), known(CSIDL_COMMON_APPDATA) + "\\OSTREL\\Geoids\\");
}

TEST_F(AppDirs, AreEmptyForALibraryWithoutAFolder)
{
    const ApplicationDirs dirs = find_application_dirs(ZOR_W("zorutils.dll"), ZOR_W("C:\\a.exe"));
    for (const Wide* text : {&dirs.applicationPath, &dirs.exeDir, &dirs.rootDir,
                             &dirs.commonDataDir, &dirs.docsDir, &dirs.geoidsFolder})
        EXPECT_TRUE(text->empty());
    EXPECT_FALSE(dirs.isInstalled);
    EXPECT_EQ(shown(app_data_dir(dirs)), "\\OSTREL");
    EXPECT_EQ(shown(geo_data_dir(dirs)), "\\Geo\\");
    EXPECT_EQ(shown(geoids_data_dir(dirs)), "\\");
}

TEST_F(AppDirs, OfALibraryAtTheRoot)
{
    const ApplicationDirs dirs = find_application_dirs(ZOR_W("C:\\zorutils.dll"), ZOR_W("road"));
    EXPECT_EQ(shown(dirs.exeDir), "C:");
    EXPECT_EQ(shown(dirs.applicationPath), "C:\\") << "a program without a folder has no name";
    EXPECT_EQ(shown(dirs.rootDir), known(CSIDL_APPDATA)) << "there is no suffix";
}

TEST_F(AppDirs, AreToldByTheFileBesideTheLibrary)
{
    struct Row
    {
        const char *file, *root, *docs; // null: the system's
    };
    const Row rows[] = {
        {"[Directories]\r\nUser=D:\\u\r\nDocuments=D:\\d\r\n", "D:\\u", "D:\\d"},
        {"[Directories]\r\nUser=D:\\u\\\r\n", "D:\\u\\", nullptr},
        {"[Directories]\r\nDocuments=\r\n", nullptr, ""},
        {"[directories]\r\nUser=D:\\u\r\n", nullptr, nullptr},
        {"User=D:\\u\r\n", nullptr, nullptr},
        {"[Directories]\r\nUser=D:\\u\r\n-broken\r\n", nullptr, nullptr},
        {"", nullptr, nullptr},
    };
    for (const Row& row : rows) {
        folder.write("Survey/zor_dir.ini", row.file);
        const ApplicationDirs dirs = find();
        EXPECT_EQ(shown(dirs.rootDir),
                  row.root != nullptr ? row.root : known(CSIDL_APPDATA) + "\\Survey")
            << row.file;
        EXPECT_EQ(shown(dirs.docsDir),
                  row.docs != nullptr ? row.docs : known(CSIDL_PERSONAL) + "\\Survey")
            << row.file;
    }
}

TEST_F(AppDirs, OfACopyThatIsNotInstalled)
{
    struct Row
    {
        const char *marker, *geoids;
    };
    const std::string own = shown(exe);
    const std::string beside = own + "\\Geoids\\";
    const Row rows[] = {
        {"GeoidsFolder=D:\\g\r\n", "D:\\g\\"},
        {"other=1\r\n", beside.c_str()},
        {"[s]\r\nGeoidsFolder=D:\\g\r\n", beside.c_str()},
        {"GeoidsFolder=D:\\g\r\n=broken\r\n", "\\"},
        {"", "\\"},
    };
    for (const Row& row : rows) {
        folder.write("Survey/components/NotInstalledApp.txt", row.marker);
        const ApplicationDirs dirs = find();
        EXPECT_FALSE(dirs.isInstalled);
        EXPECT_EQ(shown(geoids_data_dir(dirs)), row.geoids) << row.marker;
        EXPECT_EQ(shown(geo_data_dir(dirs)), own + "\\Geo\\");
    }
    std::filesystem::remove(folder / "Survey/components/NotInstalledApp.txt");
    std::filesystem::create_directory(folder / "Survey/components/NotInstalledApp.txt");
    EXPECT_TRUE(find().isInstalled) << "a folder is no marker";
}

TEST_F(AppDirs, OfThisProcessAreThoseOfItsModule)
{
    // Linked into the program here, the library's folder is the program's.
    WCHAR path[1024];
    GetModuleFileNameW(nullptr, path, 1024);
    const Wide program(path);
    EXPECT_EQ(shown(GetApplicationPath()), shown(program));
    EXPECT_EQ(shown(GetExeDir()), shown(program.Left(program.ReverseFind('\\'))));
    EXPECT_NE(GetZorDllBaseAddress(), 0);
    EXPECT_FALSE(GetRootDir().empty());
    EXPECT_FALSE(GetDocsDir().empty());
    EXPECT_EQ(shown(GetOstrelAppGeoDataDir()), shown(GetOstrelAppDataDir()) + "\\Geo\\2.0\\");
    EXPECT_EQ(shown(GetOstrelAppGeoidsDataDir()), shown(GetOstrelAppDataDir()) + "\\Geoids\\");
}
