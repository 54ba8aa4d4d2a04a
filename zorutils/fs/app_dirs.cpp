#include "zorutils/fs/app_dirs.h"

#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/app_dirs_internal.h"
#include "zorutils/fs/zor_ini_file.h"
#include "zorutils/platform/own_module.h"
#include "zorutils/platform/winapi.h"

namespace {

typedef zor_text::CZorStringT<WCHAR> String;

constexpr int path_units = 260;

String joined(String folder, const WCHAR* rest)
{
    folder += rest;
    return folder;
}

String module_path(HMODULE module)
{
    WCHAR path[path_units] = {};
    GetModuleFileNameW(module, path, path_units);
    path[path_units - 1] = 0;
    return path;
}

// The folder, empty if the system has none, and `suffix`.
String known_folder(int folder, const String& suffix)
{
    WCHAR path[path_units] = {};
    SHGetFolderPathW(nullptr, folder, nullptr, 0, path);
    return joined(path, suffix.c_str());
}

bool read(const String& path, zor_settings::CThreeTupleStore& store)
{
    zor::text_utils::EZorTextEncoding encoding;
    return zor_settings::readSettingsAsIni(path.c_str(), store, encoding);
}

void read_user_folders(ApplicationDirs& dirs)
{
    zor_settings::CThreeTupleStore store;
    if (!read(joined(dirs.exeDir, ZOR_W("\\zor_dir.ini")), store))
        return;
    store.getValue(ZOR_W("Directories"), ZOR_W("User"), dirs.rootDir);
    store.getValue(ZOR_W("Directories"), ZOR_W("Documents"), dirs.docsDir);
}

void read_marker(ApplicationDirs& dirs)
{
    const String marker = joined(dirs.exeDir, ZOR_W("\\components\\NotInstalledApp.txt"));
    dirs.isInstalled = !FileFuncs::IsFileExist(marker);
    zor_settings::CThreeTupleStore store;
    if (dirs.isInstalled || !read(marker, store))
        return;
    dirs.geoidsFolder = joined(dirs.exeDir, ZOR_W("\\Geoids"));
    store.getValue(String(), ZOR_W("GeoidsFolder"), dirs.geoidsFolder);
}

thread_local bool finding = false;

ApplicationDirs* find_own_dirs()
{
    finding = true;
    try {
        auto* const dirs = new ApplicationDirs(
            find_application_dirs(module_path(zor::platform::module_at(
                                      reinterpret_cast<const void*>(GetZorDllBaseAddress()))),
                                  module_path(nullptr)));
        finding = false;
        return dirs;
    } catch (...) {
        finding = false;
        throw;
    }
}

const ApplicationDirs& application_dirs()
{
    // Never destroyed: the log asks for folders while the process ends.
    static const ApplicationDirs* const dirs = find_own_dirs();
    return *dirs;
}

} // namespace

bool finds_application_dirs()
{
    return finding;
}

ApplicationDirs find_application_dirs(const String& library, const String& program)
{
    ApplicationDirs dirs;
    const int end = library.ReverseFind(static_cast<WCHAR>('\\'));
    if (end < 0)
        return dirs;
    dirs.exeDir = library.Left(end);
    const int program_start = program.ReverseFind(static_cast<WCHAR>('\\'));
    dirs.applicationPath = joined(dirs.exeDir, ZOR_W("\\"));
    if (program_start >= 0)
        dirs.applicationPath += program.Mid(program_start + 1);
    const int last = dirs.exeDir.ReverseFind(static_cast<WCHAR>('\\'));
    const String suffix = last < 0 ? String() : dirs.exeDir.Mid(last);
    dirs.rootDir = known_folder(CSIDL_APPDATA, suffix);
    dirs.docsDir = known_folder(CSIDL_PERSONAL, suffix);
    dirs.commonDataDir = known_folder(CSIDL_COMMON_APPDATA, String());
    read_user_folders(dirs);
    read_marker(dirs);
    return dirs;
}

String app_data_dir(const ApplicationDirs& dirs)
{
    return joined(dirs.commonDataDir, ZOR_W("\\OSTREL"));
}

String geo_data_dir(const ApplicationDirs& dirs)
{
    return dirs.isInstalled ? joined(app_data_dir(dirs), ZOR_W("\\Geo\\2.0\\"))
                            : joined(dirs.exeDir, ZOR_W("\\Geo\\"));
}

String geoids_data_dir(const ApplicationDirs& dirs)
{
    return dirs.isInstalled ? joined(app_data_dir(dirs), ZOR_W("\\Geoids\\"))
                            : joined(dirs.geoidsFolder, ZOR_W("\\"));
}

String GetApplicationPath()
{
    return application_dirs().applicationPath;
}

String GetExeDir()
{
    return application_dirs().exeDir;
}

String GetRootDir()
{
    return application_dirs().rootDir;
}

String GetDocsDir()
{
    return application_dirs().docsDir;
}

String GetOstrelAppDataDir()
{
    return app_data_dir(application_dirs());
}

String GetOstrelAppGeoDataDir()
{
    return geo_data_dir(application_dirs());
}

String GetOstrelAppGeoidsDataDir()
{
    return geoids_data_dir(application_dirs());
}

intptr_t GetZorDllBaseAddress()
{
    return reinterpret_cast<intptr_t>(&GetZorDllBaseAddress);
}
